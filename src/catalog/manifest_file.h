#pragma once

#include <string>

#include "base/settings.h"

namespace kitbay::catalog {

/// Whether a manifest may be stored under that name: a plain file name that ends in ".xml" and
/// cannot be one of the program's own files in the same folder.
bool IsManifestName(const std::string& name);

/// The file in which the manifest with that name is stored.
std::string ManifestPath(const base::Settings& settings, const std::string& manifest);

}  // namespace kitbay::catalog
