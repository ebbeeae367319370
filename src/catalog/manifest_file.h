#pragma once

#include <string>

#include "base/settings.h"
#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// Whether a manifest of that name may lie in the folder of manifests: a plain file name that ends
/// in ".xml" and can mean none of the program's own files there.
bool IsManifestName(const std::string& name);

/// Loads the manifest of that name, to be read. False when the name is none of a manifest, or the
/// file does not load.
bool TryLoadManifest(const platform::Files& files, const base::Settings& settings,
                     const std::string& name, XmlDocument& document);

}  // namespace kitbay::catalog
