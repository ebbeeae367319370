#include "catalog/installed_with_updates.h"

#include <limits>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/registry_files.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {

using base::ComponentKind;
using base::guarded;

bool InstalledWithUpdates::InstalledAddons() {
  bool is_listed = true;
  guarded(log_, "Kitbay::InstalledAddons",
          [&] { is_listed = ListEntries(ComponentKind::kAddon, &UpdateCheck::AddAddonInfo); });
  return is_listed;
}

bool InstalledWithUpdates::InstalledTransports() {
  bool is_listed = true;
  guarded(log_, "Kitbay::InstalledTransports", [&] {
    is_listed = ListEntries(ComponentKind::kTransport, &UpdateCheck::AddTransportInfo);
  });
  return is_listed;
}

bool InstalledWithUpdates::InstalledChannels() {
  bool is_listed = true;
  guarded(log_, "Kitbay::InstalledChannels", [&] { is_listed = ListChannels(); });
  return is_listed;
}

bool InstalledWithUpdates::ListEntries(ComponentKind kind, CheckOfOneSource check) {
  const KindTable& table = kKindTables[kind];
  const CatalogFiles::Refresh refresh(files_);
  const int custom_entries = GetCustomAddonLength(
      settings_.CustomDataFolder + "\\CustomRegistry.xml", table.custom_entries);
  const XmlDocument* datastore = files_.TryDatastore();
  if (datastore == nullptr) {
    return true;
  }
  shown_.ids.clear();
  if (!datastore->select_node(table.registry_list)) {
    rows_.FillDivStatus(kind, false);
    return true;
  }
  const Entries entries(*datastore, table.registered);
  shown_.is_answered = false;
  if (!entries.empty() || custom_entries > 0) {
    RowNumber row;
    CheckAllSources(check, entries, row);
  }
  return entries.empty() || shown_.is_answered;
}

bool InstalledWithUpdates::ListChannels() {
  const KindTable& table = kKindTables.channel;
  const CatalogFiles::Refresh refresh(files_);
  const int custom_entries = GetCustomAddonLength(
      settings_.CustomDataFolder + "\\CustomRegistry.xml", table.custom_entries);
  const XmlDocument* datastore = files_.TryDatastore();
  if (datastore == nullptr) {
    return true;
  }
  shown_.ids.clear();
  shown_.is_answered = false;
  RowNumber row;
  const bool has_list = static_cast<bool>(datastore->select_node(table.registry_list));
  const Entries channels(*datastore, table.registered);
  if (has_list) {
    ListDatastoreChannels(channels, row);
  } else {
    rows_.FillDivStatus(ComponentKind::kChannel, false);
  }
  const XmlDocument* custom = files_.TryCustomRegistry();
  if (custom_entries > 0 && custom != nullptr) {
    // A channel in both files is listed from the datastore.
    const Entries custom_channels(
        *custom, table.custom_entries, [shown = ShownIds()](const pugi::xml_node& channel) {
          return shown.contains(base::ToLower(channel.attribute("id").value()));
        });
    CheckAllSources(&UpdateCheck::AddCustomInfo, custom_channels, row);
    ListCustomChannels(custom_channels, row);
  }
  return channels.empty() || shown_.is_answered;
}

void InstalledWithUpdates::ListDatastoreChannels(const Entries& channels, RowNumber& row) {
  rows_.FillDivHeader(Category::kInstalled, ComponentKind::kChannel);
  CheckAllSources(&UpdateCheck::AddInfo, channels, row);
}

std::unordered_set<std::string> InstalledWithUpdates::ShownIds() const {
  std::unordered_set<std::string> shown;
  for (const std::string& id : shown_.ids) {
    shown.insert(base::ToLower(id));
  }
  return shown;
}

void InstalledWithUpdates::ListCustomChannels(const Entries& channels, RowNumber& row) {
  guarded(log_, "Kitbay::ListCustomChannels", [&] {
    std::unordered_set<std::string> shown = ShownIds();
    for (const pugi::xml_node& channel : channels) {
      if (shown.insert(base::ToLower(AttributeText(channel, "id"))).second) {
        const std::string name = AttributeText(channel, "name");
        const std::string version = AttributeText(channel, "version");
        const std::string description = ChildText(channel, "description");
        const pugi::xml_node core = channel.child("core");
        const bool is_core = core && IsCore(ElementText(core));
        rows_.fillDiv(ComponentKind::kChannel, {name, version, description, row.Next()}, is_core);
      }
    }
  });
}

void InstalledWithUpdates::CheckAllSources(CheckOfOneSource check, const Entries& installed,
                                           RowNumber& row) {
  for (const std::string& source : sources_.UpdateSources) {
    (check_.*check)(installed, base::AfterLastSlash(source), row);
  }
}

std::int16_t InstalledWithUpdates::GetCustomAddonLength(const std::string& path,
                                                        const std::string& selection) {
  std::int16_t length = 0;
  guarded(log_, "Kitbay::GetCustomAddonLength", [&] {
    const CatalogFiles::Refresh refresh(files_);
    const XmlDocument* document = files_.TryFile(path);
    if (document == nullptr) {
      return;
    }
    const std::size_t nodes = document->select_nodes(selection.c_str()).size();
    if (nodes > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
      throw base::Failure(base::RuntimeError::kOverflow);
    }
    length = static_cast<std::int16_t>(nodes);
  });
  return length;
}

}  // namespace kitbay::catalog
