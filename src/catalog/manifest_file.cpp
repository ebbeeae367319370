#include "catalog/manifest_file.h"

#include "base/file_name.h"
#include "base/text.h"

namespace kitbay::catalog {

// A name with "~" may be the short name of another file.
bool IsManifestName(const std::string& name) {
  const std::string lower = base::ToLower(name);
  return base::IsPlainFileName(name) && lower.ends_with(".xml") &&
         name.find('~') == std::string::npos && lower != "directorypreference.xml" &&
         lower != "updatepreference.xml";
}

std::string ManifestPath(const base::Settings& settings, const std::string& manifest) {
  return settings.InstallFolder + "\\Kitbay\\" + manifest;
}

}  // namespace kitbay::catalog
