#include "catalog/catalog_files.h"

#include <cassert>
#include <utility>

#include "base/text.h"
#include "catalog/manifest_file.h"
#include "catalog/registry_files.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

template <typename Content>
Content* Address(std::optional<Content>& content) {
  return content ? &*content : nullptr;
}

}  // namespace

CatalogFiles::Refresh::~Refresh() {
  if (--files_.refreshes_ == 0) {
    files_.snapshot_ = Snapshot();
  }
}

// `read` fills an empty content.
template <typename Content, typename Read>
CatalogFiles::Reading<Content>& CatalogFiles::ReadOnce(Readings<Content>& readings,
                                                       const std::string& path, Read read) {
  assert(refreshes_ > 0);
  const auto [place, is_new] = readings.try_emplace(base::ToLower(path));
  Reading<Content>& reading = place->second;
  if (is_new) {
    try {
      read(reading.content);
    } catch (const base::Failure&) {
      reading.content.reset();
      reading.failure = std::current_exception();
    }
  }
  return reading;
}

CatalogFiles::Reading<Registry>& CatalogFiles::ReadDatastore() {
  const std::string path = DatastorePath(settings_);
  return ReadOnce(snapshot_.registries, path, [&](std::optional<Registry>& registry) {
    XmlDocument document;
    LoadXml(files_, path, document);
    registry.emplace(document, snapshot_.installed);
  });
}

Registry& CatalogFiles::Datastore() {
  Reading<Registry>& datastore = ReadDatastore();
  if (!datastore.content) {
    std::rethrow_exception(datastore.failure);
  }
  return *datastore.content;
}

Registry* CatalogFiles::TryDatastore() { return Address(ReadDatastore().content); }

Registry* CatalogFiles::TryCustomRegistry() {
  const std::string path = CustomRegistryPath(settings_);
  return Address(ReadOnce(snapshot_.registries, path, [&](std::optional<Registry>& registry) {
                   if (const XmlDocument* document = TryFile(path)) {
                     registry.emplace(*document, snapshot_.installed);
                   }
                 }).content);
}

const InstalledIds& CatalogFiles::Installed(base::ComponentKind kind) {
  TryCustomRegistry();
  TryDatastore();
  return snapshot_.installed[kind];
}

const Offers* CatalogFiles::TryOffers(const std::string& manifest) {
  if (!IsManifestName(manifest)) {
    return nullptr;
  }
  return Address(ReadOnce(snapshot_.offers, manifest, [&](std::optional<Offers>& offers) {
                   TryCustomRegistry();
                   TryDatastore();
                   XmlDocument document;
                   LoadManifest(manifest, document);
                   offers.emplace(document, snapshot_.installed,
                                  trust_.IsDemandedOf(manifest) ? manifest : "");
                 }).content);
}

const XmlDocument* CatalogFiles::TryFile(const std::string& path) {
  return Address(ReadOnce(snapshot_.documents, path, [&](std::optional<XmlDocument>& document) {
                   LoadXml(files_, path, document.emplace());
                 }).content);
}

const XmlDocument* CatalogFiles::TryManifest(const std::string& name) {
  if (!IsManifestName(name)) {
    return nullptr;
  }
  const std::string path = ManifestPath(settings_, name);
  return Address(ReadOnce(snapshot_.documents, path, [&](std::optional<XmlDocument>& document) {
                   LoadManifest(name, document.emplace());
                 }).content);
}

// The bytes that are checked are the bytes that are parsed.
void CatalogFiles::LoadManifest(const std::string& name, XmlDocument& document) const {
  const std::string path = ManifestPath(settings_, name);
  std::string bytes = files_.Read(path);
  try {
    trust_.CheckSignature(name, bytes);
  } catch (const base::Failure& refusal) {
    trust_.LogRefusal(refusal);
    throw;
  }
  ParseXml(std::move(bytes), path, document);
}

}  // namespace kitbay::catalog
