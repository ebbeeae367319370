#include "sample_suite.h"

#include <cstdio>
#include <cstdlib>

#include "base/failure.h"
#include "view/row_markup.h"

namespace kitbay::bench {
namespace {

using base::ComponentKind;

constexpr base::PerKind<const char*> kContainers = {
    .addon = "addons", .transport = "transports", .channel = "channels"};
constexpr base::PerKind<const char*> kElements = {
    .addon = "addon", .transport = "transport", .channel = "channel"};

std::string Entry(ComponentKind kind, std::size_t index) {
  const std::string number = std::to_string(index);
  const std::string element = kElements[kind];
  return "<" + element + " id=\"component" + number + "\" name=\"Gespr\u00E4che " + number +
         "\" version=\"1.4.0." + number + "\"><progid>Sample.Component" + number +
         "</progid><namespace>component" + number +
         "</namespace><displayname>Play Gespr\u00E4che " + number +
         "</displayname><filename>component" + number +
         ".dll</filename><compatiblewithallclients>1</compatiblewithallclients><autoaccept>0"
         "</autoaccept><description>Keeps the last hundred lines of every conversation, so that a "
         "friend who comes back later &amp; asks can read them.</description><core>" +
         (index % 10 == 0 ? "1" : "0") + "</core><params> </params></" + element + ">";
}

std::string ManifestEntry(ComponentKind kind, std::size_t index, const std::string& id_prefix) {
  const std::string number = std::to_string(index);
  const std::string element = kElements[kind];
  const std::string id = id_prefix + number;
  return "<" + element + " id=\"" + id + "\" type=\"tool\"><name>Gespr\u00E4che " + number +
         "</name><version>1.4.0.99999</version><description>Keeps the last hundred lines of every "
         "conversation, so that a friend who comes back later &amp; asks can read them."
         "</description><url>packages.example/ovalink/" +
         id + ".zip</url><progid>Sample.Component" + number + "</progid><filename>" + id +
         ".dll</filename><category></category><autoaccept>0</autoaccept><params></params>"
         "<offline>0</offline><dependencies></dependencies></" +
         element + ">";
}

[[noreturn]] void End(const std::string& why) {
  std::fprintf(stderr, "bench: %s\n", why.c_str());
  std::exit(1);
}

}  // namespace

std::string DatastoreOf(ComponentKind kind, std::size_t entries) {
  std::string text = "<root>";
  for (const ComponentKind container : base::kComponentKinds) {
    text += std::string("<") + kContainers[container] + ">";
    for (std::size_t i = 1; container == kind && i <= entries; ++i) {
      text += Entry(kind, i);
    }
    text += std::string("</") + kContainers[container] + ">";
  }
  return text + "</root>";
}

std::string ManifestOf(ComponentKind kind, std::size_t entries, const std::string& id_prefix) {
  std::string text = "<components>";
  for (const ComponentKind container : base::kComponentKinds) {
    text += std::string("<") + kContainers[container] + ">";
    for (std::size_t i = 1; container == kind && i <= entries; ++i) {
      text += ManifestEntry(kind, i, id_prefix);
    }
    text += std::string("</") + kContainers[container] + ">";
  }
  return text + "</components>";
}

std::string DatastoreOfAllKinds(std::size_t entries) {
  std::string text = "<root>";
  for (std::size_t i = 0; i < base::kComponentKinds.size(); ++i) {
    const ComponentKind kind = base::kComponentKinds[i];
    text += std::string("<") + kContainers[kind] + ">";
    for (std::size_t number = i; number < entries; number += base::kComponentKinds.size()) {
      text += Entry(kind, number);
    }
    text += std::string("</") + kContainers[kind] + ">";
  }
  return text + "</root>";
}

std::string ManifestOfAllKinds(std::size_t entries, const std::string& id_prefix) {
  std::string text = "<components>";
  for (std::size_t i = 0; i < base::kComponentKinds.size(); ++i) {
    const ComponentKind kind = base::kComponentKinds[i];
    text += std::string("<") + kContainers[kind] + ">";
    for (std::size_t number = i; number < entries; number += base::kComponentKinds.size()) {
      text += ManifestEntry(kind, number, number % 2 == 0 ? "component" : id_prefix);
    }
    text += std::string("</") + kContainers[kind] + ">";
  }
  return text + "</components>";
}

bool DatastoreDisk::Exists(const std::string& path) const {
  return path.ends_with("olregistry.xml");
}

std::string DatastoreDisk::Read(const std::string& path) const {
  if (!Exists(path)) {
    throw base::Failure(base::RuntimeError::kFileNotFound);
  }
  return datastore_;
}

std::unique_ptr<platform::FileReader> DatastoreDisk::Open(const std::string& path) const {
  End("opened " + path);
}
void DatastoreDisk::Create(const std::string& path, std::string_view /*bytes*/) {
  End("created " + path);
}
void DatastoreDisk::Replace(const std::string& path, std::string_view /*bytes*/) {
  End("replaced " + path);
}
void DatastoreDisk::CreateFolder(const std::string& path) { End("created " + path); }
platform::LocalTime DatastoreDisk::LastModified(const std::string& /*path*/) const { return {}; }

void StrictLog::LogError(const std::string& /*time_text*/, const std::string& procedure,
                         std::int32_t /*number*/, const std::string& description) {
  End(procedure + ": " + description);
}

void CountedRows::fillDiv(ComponentKind /*kind*/, const catalog::ComponentRow& row, bool is_core) {
  ++rows_;
  markup_bytes_ +=
      view::RowStartTag(row.number).size() +
      view::NameLine(std::string(row.name), row.number, std::string(row.version)).size() +
      view::InstalledPanel(view::DescriptionOpening(std::string(row.description), row.number),
                           is_core)
          .size();
}

SampleSuite::SampleSuite(ComponentKind kind, std::size_t entries)
    : kind_(kind), disk_(DatastoreOf(kind, entries)) {
  settings_.InstallFolder = "C:\\Program Files\\Ovalink";
  settings_.CustomDataFolder = "C:\\Users\\Ada\\AppData\\Roaming\\Ovalink\\CustomData";
}

void SampleSuite::Load() {
  const catalog::CatalogFiles::Refresh refresh(catalog_files_);
  catalog_files_.Datastore();
}

void SampleSuite::List() {
  switch (kind_) {
    case ComponentKind::kAddon:
      installed_.InitialInstalledAddons();
      break;
    case ComponentKind::kTransport:
      installed_.InitialInstalledTransports();
      break;
    case ComponentKind::kChannel:
      installed_.InitialInstalledChannels();
      break;
  }
}

}  // namespace kitbay::bench
