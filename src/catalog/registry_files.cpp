#include "catalog/registry_files.h"

namespace kitbay::catalog {

std::string DatastorePath(const base::Settings& settings) {
  return settings.InstallFolder + "\\Datastore\\olregistry.xml";
}

std::string CustomRegistryPath(const base::Settings& settings) {
  return settings.CustomDataFolder + "\\customregistry.xml";
}

bool IsCore(std::string_view core) { return core >= "1"; }

}  // namespace kitbay::catalog
