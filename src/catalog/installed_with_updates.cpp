#include "catalog/installed_with_updates.h"

#include <limits>
#include <vector>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/kind_tables.h"
#include "catalog/registry_files.h"

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
  const CatalogFiles::Refresh refresh(files_);
  const int custom_entries = CountCustomEntries(kind);
  Registry* const datastore = files_.TryDatastore();
  if (datastore == nullptr) {
    return true;
  }
  InstalledEntries& installed = (*datastore)[kind];
  shown_.ids.clear();
  if (!installed.has_list) {
    rows_.FillDivStatus(kind, false);
    return true;
  }
  shown_.is_answered = false;
  if (!installed.entries.empty() || custom_entries > 0) {
    RowNumber row;
    CheckAllSources(check, installed.entries, row);
  }
  return installed.entries.empty() || shown_.is_answered;
}

bool InstalledWithUpdates::ListChannels() {
  const CatalogFiles::Refresh refresh(files_);
  const int custom_entries = CountCustomEntries(ComponentKind::kChannel);
  Registry* const datastore = files_.TryDatastore();
  if (datastore == nullptr) {
    return true;
  }
  InstalledEntries& channels = (*datastore)[ComponentKind::kChannel];
  shown_.ids.clear();
  shown_.is_answered = false;
  RowNumber row;
  ListDatastoreChannels(channels, row);
  if (custom_entries > 0) {
    ListCustomRegistry(row);
  }
  return channels.entries.empty() || shown_.is_answered;
}

void InstalledWithUpdates::ListDatastoreChannels(InstalledEntries& channels, RowNumber& row) {
  if (!channels.has_list) {
    rows_.FillDivStatus(ComponentKind::kChannel, false);
    return;
  }
  rows_.FillDivHeader(Category::kInstalled, ComponentKind::kChannel);
  CheckAllSources(&UpdateCheck::AddInfo, channels.entries, row);
}

// A channel in both files is listed from the datastore.
void InstalledWithUpdates::ListCustomRegistry(RowNumber& row) {
  Registry* const custom = files_.TryCustomRegistry();
  if (custom == nullptr) {
    return;
  }
  std::vector<InstalledEntry> channels = (*custom)[ComponentKind::kChannel].entries;
  std::erase_if(channels, [shown = ShownIds()](const InstalledEntry& channel) {
    return shown.contains(base::ToLower(channel.id.value_or("")));
  });
  CheckAllSources(&UpdateCheck::AddCustomInfo, channels, row);
  ListCustomChannels(channels, row);
}

std::unordered_set<std::string> InstalledWithUpdates::ShownIds() const {
  std::unordered_set<std::string> shown;
  for (const std::string& id : shown_.ids) {
    shown.insert(base::ToLower(id));
  }
  return shown;
}

void InstalledWithUpdates::ListCustomChannels(Installed channels, RowNumber& row) {
  guarded(log_, "Kitbay::ListCustomChannels", [&] {
    std::unordered_set<std::string> shown = ShownIds();
    for (const InstalledEntry& channel : channels) {
      if (shown.insert(base::ToLower(Needed(channel.id))).second) {
        const std::string_view name = Needed(channel.name);
        const std::string_view version = Needed(channel.version);
        const std::string_view description = Needed(channel.description);
        const bool is_core = channel.core && IsCore(*channel.core);
        rows_.fillDiv(ComponentKind::kChannel, {name, version, description, row.Next()}, is_core);
      }
    }
  });
}

void InstalledWithUpdates::CheckAllSources(CheckOfOneSource check, Installed installed,
                                           RowNumber& row) {
  for (const std::string& source : sources_.UpdateSources) {
    (check_.*check)(installed, base::AfterLastSlash(source), row);
  }
}

int InstalledWithUpdates::CountCustomEntries(ComponentKind kind) {
  return GetCustomAddonLength(settings_.CustomDataFolder + "\\CustomRegistry.xml",
                              kKindTables[kind].custom_entries);
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
