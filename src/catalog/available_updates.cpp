#include "catalog/available_updates.h"

#include <unordered_map>

#include "base/failure.h"
#include "base/guarded.h"
#include "catalog/kind_tables.h"
#include "catalog/registry_files.h"
#include "catalog/version_rule.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

using base::ComponentKind;
using base::guarded;

// The versions that a manifest offers, by the ids of its entries.
class Offers {
 public:
  // An entry without an id ends the index, just as it ends a walk through the entries.
  explicit Offers(const Entries& entries) {
    for (const pugi::xml_node& entry : entries) {
      const pugi::xml_attribute id = entry.attribute("id");
      if (!id) {
        is_cut_off_ = true;
        return;
      }
      versions_.emplace(id.value(), entry.child("version"));
    }
  }

  // Whether the first entry of `id` offers a newer version than `installed`. Throws 91 if an entry
  // without an id precedes it, or if it has no version.
  bool HasNewer(const std::string& id, const std::string& installed) const {
    const auto offer = versions_.find(id);
    if (offer != versions_.end()) {
      return IsNewer(installed, ElementText(offer->second));
    }
    if (is_cut_off_) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
    return false;
  }

 private:
  std::unordered_map<std::string_view, pugi::xml_node> versions_;  // the ids belong to the document
  bool is_cut_off_ = false;
};

// A channel has no library to read its version from.
std::string VersionOfChannel(const pugi::xml_node& entry, const std::string& /*id*/) {
  return AttributeText(entry, "version");
}

}  // namespace

void AvailableUpdates::AddAddonInfo(const Entries& installed, const std::string& manifest,
                                    RowNumber& row) {
  guarded(log_, "Kitbay::AddAddonInfo", [&] {
    CheckEntries(
        ComponentKind::kAddon, installed, manifest,
        [&](const pugi::xml_node& entry, const std::string& id) {
          return versions_.OfAddon(id, ChildText(entry, "filename"));
        },
        row);
  });
}

void AvailableUpdates::AddTransportInfo(const Entries& installed, const std::string& manifest,
                                        RowNumber& row) {
  guarded(log_, "Kitbay::AddTransportInfo", [&] {
    CheckEntries(
        ComponentKind::kTransport, installed, manifest,
        [&](const pugi::xml_node& entry, const std::string& /*id*/) {
          return versions_.OfTransport(ChildText(entry, "filename"));
        },
        row);
  });
}

void AvailableUpdates::AddInfo(const Entries& installed, const std::string& manifest,
                               RowNumber& row) {
  guarded(log_, "Kitbay::AddInfo", [&] {
    CheckEntries(ComponentKind::kChannel, installed, manifest, VersionOfChannel, row);
  });
}

void AvailableUpdates::AddCustomInfo(const Entries& installed, const std::string& manifest,
                                     RowNumber& row) {
  guarded(log_, "Kitbay::AddCustomInfo", [&] {
    CheckEntries(ComponentKind::kChannel, installed, manifest, VersionOfChannel, row);
  });
}

void AvailableUpdates::CheckEntries(ComponentKind kind, const Entries& installed,
                                    const std::string& manifest, const VersionOf& version_of,
                                    RowNumber& row) {
  const KindTable& table = kKindTables[kind];
  const CatalogFiles::Refresh refresh(files_);
  const XmlDocument* document = files_.TryManifest(manifest);
  if (document == nullptr || !document->select_node(table.manifest_list) || installed.empty()) {
    return;
  }
  shown_.is_answered = true;
  // The channels' heading is above the rows of all sources; the caller has written it.
  if (kind != ComponentKind::kChannel) {
    rows_.FillDivHeader(Category::kInstalled, kind);
  }
  const Offers offered(Entries(*document, table.offers));
  for (const pugi::xml_node& entry : installed) {
    const std::string id = AttributeText(entry, "id");
    const std::string version = version_of(entry, id);
    const bool has_update = offered.HasNewer(id, version);
    AddRow(kind, entry, id, version, has_update, row);
  }
}

void AvailableUpdates::AddRow(ComponentKind kind, const pugi::xml_node& entry,
                              const std::string& id, const std::string& version, bool has_update,
                              RowNumber& row) {
  const std::string name = AttributeText(entry, "name");
  const std::string description = ChildText(entry, "description");
  shown_.ids.push_back(id);
  const bool is_core = IsCore(ChildText(entry, "core"));
  const ComponentRow shown{name, version, description, row.Next()};
  if (has_update) {
    rows_.fillDivWithUpdates(kind, shown, is_core);
  } else {
    rows_.fillDiv(kind, shown, is_core);
  }
}

}  // namespace kitbay::catalog
