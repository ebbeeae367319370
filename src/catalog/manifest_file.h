#pragma once

#include <string>

#include "base/settings.h"

namespace kitbay::catalog {

/// Whether a manifest of that name may lie in the folder of manifests: a plain file name that ends
/// in ".xml" and can mean none of the program's own files there.
bool IsManifestName(const std::string& name);

/// The file that the manifest of that name is kept in.
std::string ManifestPath(const base::Settings& settings, const std::string& manifest);

}  // namespace kitbay::catalog
