#include "catalog/new_component_listing.h"

#include <pugixml.hpp>
#include <utility>

#include "base/guarded.h"
#include "base/text.h"
#include "catalog/entries.h"
#include "catalog/kind_tables.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

using base::ComponentKind;
using base::guarded;

void AddIds(const pugi::xml_document& document, const char* path,
            std::unordered_set<std::string>& ids) {
  for (const pugi::xpath_node& entry : SelectNodes(document, path)) {
    ids.insert(base::ToLower(FirstAttributeText(entry.node())));
  }
}

}  // namespace

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
  const Ids installed = InstalledIds(kind);
  rows_.FillDivHeader(Category::kNew, kind);
  RowNumber row;
  for (const std::string& source : sources_.UpdateSources) {
    guarded(log_, source_procedure,
            [&] { ListOffers(kind, base::AfterLastSlash(source), installed, row); });
  }
  const bool is_empty = row.Last() == 0;
  if (is_empty) {
    rows_.FillEmptyDivHeader(kind);
  }
  rows_.ShowTab(kind, !is_empty);
}

NewComponentListing::Ids NewComponentListing::InstalledIds(ComponentKind kind) {
  const char* path = kKindTables[kind].installed;
  Ids ids;
  for (const XmlDocument* document : {files_.TryCustomRegistry(), files_.TryDatastore()}) {
    if (document != nullptr) {
      AddIds(*document, path, ids);
    }
  }
  return ids;
}

void NewComponentListing::ListOffers(ComponentKind kind, const std::string& manifest_name,
                                     const Ids& installed, RowNumber& row) {
  const XmlDocument* manifest = files_.TryManifest(manifest_name);
  if (manifest == nullptr) {
    return;
  }
  for (const pugi::xml_node& entry : Entries(*manifest, kKindTables[kind].offers)) {
    if (installed.contains(base::ToLower(FirstAttributeText(entry)))) {
      continue;
    }
    NewComponent component{.id = AttributeText(entry, "id"),
                           .name = ChildText(entry, "name"),
                           .url = ChildText(entry, "url"),
                           .digest = files_.SignedDigest(manifest_name, entry)};
    const std::string version = ChildText(entry, "version");
    const std::string description = ChildText(entry, "description");
    // Last, so that an offer with a missing text uses no number.
    rows_.showUpdates(kind, {component.name, version, description, row.Next()});
    found_[kind].push_back(std::move(component));
  }
}

}  // namespace kitbay::catalog
