#include "catalog/catalog_files.h"

#include <cassert>
#include <utility>

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
  return LoadWith(path, [&](XmlDocument& document) { LoadXml(files_, path, document); });
}

const CatalogFiles::File& CatalogFiles::LoadWith(
    const std::string& path, const std::function<void(XmlDocument& document)>& load) {
  assert(refreshes_ > 0);
  const auto [place, is_new] = snapshot_.files.try_emplace(base::ToLower(path));
  File& file = place->second;
  if (is_new) {
    try {
      load(file.document);
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

void CatalogFiles::DemandTrust(const std::string& manifest, const std::string& bytes) const {
  try {
    trust_.CheckSignature(manifest, bytes);
  } catch (const base::Failure& refusal) {
    trust_.LogRefusal(refusal);
    throw;
  }
}

const XmlDocument* CatalogFiles::TryManifest(const std::string& name) {
  if (!IsManifestName(name)) {
    return nullptr;
  }
  const std::string path = ManifestPath(settings_, name);
  // The bytes that are checked are the bytes that are parsed.
  const File& file = LoadWith(path, [&](XmlDocument& document) {
    std::string bytes = files_.Read(path);
    DemandTrust(name, bytes);
    ParseXml(std::move(bytes), path, document);
  });
  return file.failure ? nullptr : &file.document;
}

}  // namespace kitbay::catalog
