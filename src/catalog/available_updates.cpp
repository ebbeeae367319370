#include "catalog/available_updates.h"

#include "base/guarded.h"
#include "catalog/registry_files.h"

namespace kitbay::catalog {

using base::ComponentKind;
using base::guarded;

void AvailableUpdates::AddAddonInfo(Installed installed, const std::string& manifest,
                                    RowNumber& row) {
  guarded(log_, "Kitbay::AddAddonInfo",
          [&] { CheckEntries(ComponentKind::kAddon, installed, manifest, row); });
}

void AvailableUpdates::AddTransportInfo(Installed installed, const std::string& manifest,
                                        RowNumber& row) {
  guarded(log_, "Kitbay::AddTransportInfo",
          [&] { CheckEntries(ComponentKind::kTransport, installed, manifest, row); });
}

void AvailableUpdates::AddInfo(Installed installed, const std::string& manifest, RowNumber& row) {
  guarded(log_, "Kitbay::AddInfo",
          [&] { CheckEntries(ComponentKind::kChannel, installed, manifest, row); });
}

void AvailableUpdates::AddCustomInfo(Installed installed, const std::string& manifest,
                                     RowNumber& row) {
  guarded(log_, "Kitbay::AddCustomInfo",
          [&] { CheckEntries(ComponentKind::kChannel, installed, manifest, row); });
}

void AvailableUpdates::CheckEntries(ComponentKind kind, Installed installed,
                                    const std::string& manifest, RowNumber& row) {
  const CatalogFiles::Refresh refresh(files_);
  const Offers* offers = files_.TryOffers(manifest);
  if (offers == nullptr || !(*offers)[kind].exists() || installed.empty()) {
    return;
  }
  shown_.is_answered = true;
  // The channels' heading is above the rows of all sources; the caller has written it.
  if (kind != ComponentKind::kChannel) {
    rows_.FillDivHeader(Category::kInstalled, kind);
  }
  for (InstalledEntry& entry : installed) {
    AddRow(kind, entry, (*offers)[kind], row);
  }
}

void AvailableUpdates::AddRow(ComponentKind kind, InstalledEntry& entry, const OfferList& offers,
                              RowNumber& row) {
  const std::string_view id = Needed(entry.id);
  const std::string_view version = versions_.Of(kind, entry);
  const bool has_update = offers.HasNewer(entry, version);
  const std::string_view name = Needed(entry.name);
  const std::string_view description = Needed(entry.description);
  shown_.ids.emplace_back(id);
  const bool is_core = IsCore(Needed(entry.core));
  const ComponentRow shown{name, version, description, row.Next()};
  if (has_update) {
    rows_.fillDivWithUpdates(kind, shown, is_core);
  } else {
    rows_.fillDiv(kind, shown, is_core);
  }
}

}  // namespace kitbay::catalog
