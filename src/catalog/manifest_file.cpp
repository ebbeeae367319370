#include "catalog/manifest_file.h"

#include "base/file_name.h"
#include "base/text.h"
#include "catalog/available_updates.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {

// A name with "~" may be the short name of another file.
bool IsManifestName(const std::string& name) {
  const std::string lower = base::ToLower(name);
  return base::IsPlainFileName(name) && lower.ends_with(".xml") &&
         name.find('~') == std::string::npos && lower != "directorypreference.xml" &&
         lower != "updatepreference.xml";
}

bool TryLoadManifest(const platform::Files& files, const base::Settings& settings,
                     const std::string& name, XmlDocument& document) {
  return IsManifestName(name) && TryLoadXml(files, ManifestPath(settings, name), document);
}

}  // namespace kitbay::catalog
