#include "catalog/registry_files.h"

#include "catalog/xml_file.h"

namespace kitbay::catalog {

std::string DatastorePath(const base::Settings& settings) {
  return settings.InstallFolder + "\\Datastore\\olregistry.xml";
}

std::string CustomRegistryPath(const base::Settings& settings) {
  return settings.CustomDataFolder + "\\customregistry.xml";
}

void RegistryFiles::LoadDatastore(XmlDocument& document) const {
  LoadXml(files_, DatastorePath(settings_), document);
}

bool RegistryFiles::TryLoadDatastore(XmlDocument& document) const {
  return TryLoadXml(files_, DatastorePath(settings_), document);
}

bool RegistryFiles::TryLoadCustomRegistry(XmlDocument& document) const {
  return TryLoadXml(files_, settings_.CustomDataFolder + "\\CustomRegistry.xml", document);
}

bool IsCore(const std::string& core) {
  const int order = core.compare("1");
  const int sign = (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
  return ~sign != 0;
}

}  // namespace kitbay::catalog
