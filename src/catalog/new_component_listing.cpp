#include "catalog/new_component_listing.h"

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::catalog {

using base::ComponentKind;
using base::guarded;

void NewComponentListing::funcShowUpdates() {
  guarded(log_, " Kitbay::funcShowUpdates", [&] {
    rows_.AddImageTab(Category::kNew);
    ListNew(ComponentKind::kAddon, "Kitbay::UpdatesAddonInfo");
  });
}

void NewComponentListing::funcShowTransports() {
  guarded(log_, "Kitbay::funcShowTransports",
          [&] { ListNew(ComponentKind::kTransport, "Kitbay::UpdatesTransportInfo"); });
}

void NewComponentListing::funcShowChannels() {
  guarded(log_, " Kitbay::funcShowChannels",
          [&] { ListNew(ComponentKind::kChannel, "Kitbay::UpdatesInfo"); });
}

void NewComponentListing::ListNew(ComponentKind kind, const char* source_procedure) {
  const CatalogFiles::Refresh refresh(files_);
  found_[kind].clear();
  if (files_.Installed(kind).lacks_one()) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  rows_.FillDivHeader(Category::kNew, kind);
  RowNumber row;
  for (const std::string& source : sources_.UpdateSources) {
    guarded(log_, source_procedure, [&] { ListOffers(kind, base::AfterLastSlash(source), row); });
  }
  const bool is_empty = row.Last() == 0;
  if (is_empty) {
    rows_.FillEmptyDivHeader(kind);
  }
  rows_.ShowTab(kind, !is_empty);
}

void NewComponentListing::ListOffers(ComponentKind kind, const std::string& manifest,
                                     RowNumber& row) {
  const Offers* const offers = files_.TryOffers(manifest);
  if (offers == nullptr) {
    return;
  }
  const OfferList& list = (*offers)[kind];
  const auto& digests = list.digests();
  for (std::size_t i = 0; i < list.new_offers().size(); ++i) {
    const NewOffer& offer = list.new_offers()[i];
    rows_.showUpdates(kind, {offer.name, offer.version, offer.description, row.Next()});
    NewComponent& found = found_[kind].emplace_back();
    found.id = offer.id;
    found.name = offer.name;
    found.url = offer.url;
    if (!digests.empty()) {
      found.digest = digests[i];
    }
  }
  list.DemandTexts();
}

}  // namespace kitbay::catalog
