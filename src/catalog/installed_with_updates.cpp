#include "catalog/installed_with_updates.h"

#include <limits>
#include <unordered_set>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {

using base::guarded;

void InstalledWithUpdates::InstalledAddons() {
  guarded(log_, "Kitbay::InstalledAddons",
          [&] { ListEntries(kInstalledTables.addon, &UpdateCheck::AddAddonInfo); });
}

void InstalledWithUpdates::InstalledTransports() {
  guarded(log_, "Kitbay::InstalledTransports",
          [&] { ListEntries(kInstalledTables.transport, &UpdateCheck::AddTransportInfo); });
}

void InstalledWithUpdates::ListEntries(const InstalledTable& table, CheckOfOneSource check) {
  const int custom_entries = GetCustomAddonLength(
      settings_.CustomDataFolder + "\\CustomRegistry.xml", table.custom_entries);
  pugi::xml_document datastore;
  if (!registry_files_.TryLoadDatastore(datastore)) {
    return;
  }
  shown_.ClearRows();
  if (!datastore.select_node(table.registry_list)) {
    rows_.FillDivStatus(table.container, table.nothing);
    return;
  }
  const pugi::xpath_node_set entries = SelectNodes(datastore, table.entries);
  if (entries.size() + static_cast<std::size_t>(custom_entries) > 0) {
    RowNumber row;
    CheckAllSources(check, entries, row);
  }
  shown_.installed_ids.clear();
}

void InstalledWithUpdates::InstalledChannels() {
  guarded(log_, "Kitbay::InstalledChannels", [&] {
    const InstalledTable& table = kInstalledTables.channel;
    const int custom_entries = GetCustomAddonLength(
        settings_.CustomDataFolder + "\\CustomRegistry.xml", table.custom_entries);
    RowNumber row;
    if (!ListDatastoreChannels(row)) {
      return;
    }
    pugi::xml_document custom;
    if (custom_entries > 0 && registry_files_.TryLoadCustomRegistry(custom)) {
      const pugi::xpath_node_set channels = SelectNodes(custom, table.custom_entries);
      CheckAllSources(&UpdateCheck::AddCustomInfo, channels, row);
      ListCustomChannels(channels, row);
    }
  });
}

bool InstalledWithUpdates::ListDatastoreChannels(RowNumber& row) {
  const InstalledTable& table = kInstalledTables.channel;
  pugi::xml_document datastore;
  if (!registry_files_.TryLoadDatastore(datastore)) {
    return false;
  }
  shown_.ClearRows();
  if (!datastore.select_node(table.registry_list)) {
    rows_.FillDivStatus(table.container, table.nothing);
    return true;
  }
  rows_.FillDivHeader(table.container, kInstalledBar, table.heading);
  CheckAllSources(&UpdateCheck::AddInfo, SelectNodes(datastore, table.entries), row);
  return true;
}

void InstalledWithUpdates::ListCustomChannels(const pugi::xpath_node_set& channels,
                                              RowNumber& row) {
  guarded(log_, "Kitbay::ListCustomChannels", [&] {
    std::unordered_set<std::string> shown;
    for (const std::string& id : shown_.ids) {
      shown.insert(base::ToLower(id));
    }
    for (const pugi::xpath_node& selected : channels) {
      const pugi::xml_node channel = selected.node();
      if (shown.insert(base::ToLower(AttributeText(channel, "id"))).second) {
        const std::string name = AttributeText(channel, "name");
        const std::string version = AttributeText(channel, "version");
        const std::string description = ChildText(channel, "description");
        rows_.fillDiv(kInstalledTables.channel.container, name, version, description, row.Next(),
                      false);
      }
    }
  });
}

void InstalledWithUpdates::CheckAllSources(CheckOfOneSource check,
                                           const pugi::xpath_node_set& installed, RowNumber& row) {
  for (const std::string& source : sources_.UpdateSources) {
    (check_.*check)(installed, base::AfterLastSlash(source), row);
  }
}

std::int16_t InstalledWithUpdates::GetCustomAddonLength(const std::string& path,
                                                        const std::string& selection) {
  std::int16_t length = 0;
  guarded(log_, "Kitbay::GetCustomAddonLength", [&] {
    pugi::xml_document document;
    if (!TryLoadXml(files_, path, document)) {
      return;
    }
    const std::size_t nodes = document.select_nodes(selection.c_str()).size();
    if (nodes > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
      throw base::Failure(base::RuntimeError::kOverflow);
    }
    length = static_cast<std::int16_t>(nodes);
  });
  return length;
}

}  // namespace kitbay::catalog
