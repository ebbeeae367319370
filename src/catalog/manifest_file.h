#pragma once

#include <string>

#include "base/settings.h"

namespace kitbay::catalog {

/// Whether a manifest may be kept under that name: a plain file name that ends in ".xml" and cannot
/// mean one of the program's own files in the same folder.
bool IsManifestName(const std::string& name);

/// The file that the manifest of that name is kept in.
std::string ManifestPath(const base::Settings& settings, const std::string& manifest);

}  // namespace kitbay::catalog
