#include "catalog/catalog_files.h"

#include <cassert>

#include "base/text.h"
#include "catalog/manifest_file.h"
#include "catalog/registry_files.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {

CatalogFiles::Refresh::~Refresh() {
  if (--files_.refreshes_ == 0) {
    files_.snapshot_ = Snapshot();
  }
}

const CatalogFiles::File& CatalogFiles::Load(const std::string& path) {
  assert(refreshes_ > 0);
  const auto [place, is_new] = snapshot_.files.try_emplace(base::ToLower(path));
  File& file = place->second;
  if (is_new) {
    try {
      LoadXml(files_, path, file.document);
    } catch (const base::Failure& failure) {
      file.failure = failure;
    }
  }
  return file;
}

const XmlDocument& CatalogFiles::Datastore() {
  const File& file = Load(DatastorePath(settings_));
  if (file.failure) {
    throw base::Failure(*file.failure);
  }
  return file.document;
}

const XmlDocument* CatalogFiles::TryFile(const std::string& path) {
  const File& file = Load(path);
  return file.failure ? nullptr : &file.document;
}

const XmlDocument* CatalogFiles::TryDatastore() { return TryFile(DatastorePath(settings_)); }

const XmlDocument* CatalogFiles::TryCustomRegistry() {
  return TryFile(CustomRegistryPath(settings_));
}

const XmlDocument* CatalogFiles::TryManifest(const std::string& name) {
  return IsManifestName(name) ? TryFile(ManifestPath(settings_, name)) : nullptr;
}

}  // namespace kitbay::catalog
