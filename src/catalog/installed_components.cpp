#include "catalog/installed_components.h"

#include "base/guarded.h"
#include "base/text.h"
#include "catalog/registry_files.h"

namespace kitbay::catalog {

using base::ComponentKind;
using base::guarded;

void InstalledComponents::InitialInstalledAddons() {
  guarded(log_, "Kitbay::InitialInstalledAddons", [&] { ListLocalEntries(ComponentKind::kAddon); });
}

void InstalledComponents::InitialInstalledTransports() {
  guarded(log_, "Kitbay::InitialInstalledTransports",
          [&] { ListLocalEntries(ComponentKind::kTransport); });
}

void InstalledComponents::ListLocalEntries(ComponentKind kind) {
  const CatalogFiles::Refresh refresh(files_);
  InstalledEntries& installed = files_.Datastore()[kind];
  if (!installed.has_list) {
    rows_.FillDivStatus(kind, true);
    return;
  }
  if (installed.entries.empty()) {
    return;
  }
  rows_.FillDivHeader(Category::kInstalled, kind);
  RowNumber row;
  for (InstalledEntry& entry : installed.entries) {
    AddRow(kind, entry, row);
  }
}

void InstalledComponents::InitialInstalledChannels() {
  guarded(log_, "Kitbay::InitialInstalledChannels", [&] {
    rows_.AddImageTab(Category::kInstalled);
    const CatalogFiles::Refresh refresh(files_);
    Registry* const custom = files_.TryCustomRegistry();
    Registry& datastore = files_.Datastore();
    rows_.FillDivHeader(Category::kInstalled, ComponentKind::kChannel);
    std::unordered_set<std::string> shown;
    RowNumber row;
    AddChannelList(datastore[ComponentKind::kChannel], shown, row);
    if (custom != nullptr) {
      AddChannelListDirect((*custom)[ComponentKind::kChannel], shown, row);
    }
  });
}

// The deeper ones of the datastore are left out, those of the custom registry are not.
void InstalledComponents::AddChannelList(InstalledEntries& channels,
                                         std::unordered_set<std::string>& shown, RowNumber& row) {
  guarded(log_, "Kitbay::AddChannelList", [&] {
    for (InstalledEntry& channel : channels.entries) {
      if (channel.is_child_of_list) {
        AddNewChannel(channel, shown, row);
      }
    }
  });
}

void InstalledComponents::AddChannelListDirect(InstalledEntries& channels,
                                               std::unordered_set<std::string>& shown,
                                               RowNumber& row) {
  guarded(log_, "Kitbay::AddChannelListDirect", [&] {
    for (InstalledEntry& channel : channels.entries) {
      AddNewChannel(channel, shown, row);
    }
  });
}

void InstalledComponents::AddNewChannel(InstalledEntry& channel,
                                        std::unordered_set<std::string>& shown, RowNumber& row) {
  if (shown.insert(base::ToLower(Needed(channel.id))).second) {
    AddRow(ComponentKind::kChannel, channel, row);
  }
}

void InstalledComponents::AddRow(ComponentKind kind, InstalledEntry& entry, RowNumber& row) {
  const std::string_view version = versions_.Of(kind, entry);
  const std::string_view name = Needed(entry.name);
  const std::string_view description = Needed(entry.description);
  const bool is_core = IsCore(Needed(entry.core));
  rows_.fillDiv(kind, {name, version, description, row.Next()}, is_core);
}

}  // namespace kitbay::catalog
