#include "catalog/installed_components.h"

#include "base/guarded.h"
#include "base/text.h"
#include "catalog/entries.h"
#include "catalog/registry_files.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {

using base::ComponentKind;
using base::guarded;

void InstalledComponents::InitialInstalledAddons() {
  guarded(log_, "Kitbay::InitialInstalledAddons", [&] {
    ListLocalEntries(ComponentKind::kAddon, [&](const pugi::xml_node& entry) {
      return versions_.OfAddon(AttributeText(entry, "id"), ChildText(entry, "filename"));
    });
  });
}

void InstalledComponents::InitialInstalledTransports() {
  guarded(log_, "Kitbay::InitialInstalledTransports", [&] {
    ListLocalEntries(ComponentKind::kTransport, [&](const pugi::xml_node& entry) {
      return versions_.OfTransport(ChildText(entry, "filename"));
    });
  });
}

template <typename VersionOf>
void InstalledComponents::ListLocalEntries(ComponentKind kind, VersionOf version_of) {
  const KindTable& table = kKindTables[kind];
  const CatalogFiles::Refresh refresh(files_);
  const XmlDocument& datastore = files_.Datastore();
  if (!datastore.select_node(table.registry_list)) {
    rows_.FillDivStatus(kind, true);
    return;
  }
  const Entries entries(datastore, table.registered);
  if (entries.empty()) {
    return;
  }
  rows_.FillDivHeader(Category::kInstalled, kind);
  RowNumber row;
  for (const pugi::xml_node& entry : entries) {
    const std::string version = version_of(entry);
    const std::string name = AttributeText(entry, "name");
    const std::string description = ChildText(entry, "description");
    const bool is_core = IsCore(ChildText(entry, "core"));
    rows_.fillDiv(kind, {name, version, description, row.Next()}, is_core);
  }
}

void InstalledComponents::InitialInstalledChannels() {
  guarded(log_, "Kitbay::InitialInstalledChannels", [&] {
    rows_.AddImageTab(Category::kInstalled);
    const CatalogFiles::Refresh refresh(files_);
    const XmlDocument* custom = files_.TryCustomRegistry();
    const XmlDocument& datastore = files_.Datastore();
    rows_.FillDivHeader(Category::kInstalled, ComponentKind::kChannel);
    std::unordered_set<std::string> shown;
    RowNumber row;
    const pugi::xpath_node_set channels = SelectNodes(datastore, kKindTables.channel.installed);
    const pugi::xpath_node_set custom_channels =
        custom == nullptr ? pugi::xpath_node_set()
                          : SelectNodes(*custom, kKindTables.channel.custom_entries);
    shown.reserve(channels.size() + custom_channels.size());
    AddChannelList(channels, shown, row);
    AddChannelListDirect(custom_channels, shown, row);
  });
}

void InstalledComponents::AddChannelList(const pugi::xpath_node_set& channels,
                                         std::unordered_set<std::string>& shown, RowNumber& row) {
  guarded(log_, "Kitbay::AddChannelList", [&] { AddNewChannels(channels, shown, row); });
}

void InstalledComponents::AddChannelListDirect(const pugi::xpath_node_set& channels,
                                               std::unordered_set<std::string>& shown,
                                               RowNumber& row) {
  guarded(log_, "Kitbay::AddChannelListDirect", [&] { AddNewChannels(channels, shown, row); });
}

void InstalledComponents::AddNewChannels(const pugi::xpath_node_set& channels,
                                         std::unordered_set<std::string>& shown, RowNumber& row) {
  for (const pugi::xpath_node& channel : channels) {
    if (shown.insert(base::ToLower(AttributeText(channel.node(), "id"))).second) {
      AddChannelRow(channel.node(), row);
    }
  }
}

void InstalledComponents::AddChannelRow(const pugi::xml_node& channel, RowNumber& row) {
  const std::string name = AttributeText(channel, "name");
  const std::string version = AttributeText(channel, "version");
  const std::string description = ChildText(channel, "description");
  const bool is_core = IsCore(ChildText(channel, "core"));
  rows_.fillDiv(ComponentKind::kChannel, {name, version, description, row.Next()}, is_core);
}

}  // namespace kitbay::catalog
