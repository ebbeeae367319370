#include "catalog/manifest_file.h"

#include "base/file_name.h"
#include "base/text.h"

namespace kitbay::catalog {

bool IsManifestName(const std::string& name) {
  const std::string lower = base::ToLower(name);
  return base::IsPlainLongName(name) && lower.ends_with(".xml") &&
         lower != "directorypreference.xml" && lower != "updatepreference.xml";
}

std::string ManifestPath(const base::Settings& settings, const std::string& manifest) {
  return settings.InstallFolder + "\\Kitbay\\" + manifest;
}

}  // namespace kitbay::catalog
