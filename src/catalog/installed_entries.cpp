#include "catalog/installed_entries.h"

#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/entry_texts.h"
#include "catalog/kind_tables.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

InstalledEntry KeepEntry(const pugi::xml_node& entry, KeptTexts& texts) {
  const auto [core, description, filename] =
      FindChildren(entry, std::array{"core", "description", "filename"});
  return {.id = KeepText(entry.attribute("id"), texts),
          .name = KeepText(entry.attribute("name"), texts),
          .version = KeepText(entry.attribute("version"), texts),
          .core = KeepText(core, texts),
          .description = KeepText(description, texts),
          .filename = KeepText(filename, texts),
          .is_child_of_list = entry.parent().parent().parent().type() == pugi::node_document};
}

}  // namespace

std::size_t InstalledIds::Add(std::string_view id, bool is_installed) {
  const std::string lower = base::ToLower(id);
  Found& known = in_lower_case_[lower];
  known.is_installed = known.is_installed || is_installed;
  if (lower != id) {
    const auto [place, is_new] = with_capitals_.try_emplace(std::string(id), count_);
    count_ += is_new ? 1 : 0;
    return place->second;
  }
  if (!known.number) {
    known.number = count_++;
  }
  return *known.number;
}

void InstalledIds::AddInstalled(std::string_view id) {
  in_lower_case_[base::ToLower(id)].is_installed = true;
}

InstalledIds::Found InstalledIds::Find(std::string_view id) const {
  const std::string lower = base::ToLower(id);
  const auto same = in_lower_case_.find(lower);
  Found found = same == in_lower_case_.end() ? Found() : same->second;
  if (lower != id) {
    const auto exact = with_capitals_.find(std::string(id));
    found.number = exact == with_capitals_.end() ? std::nullopt : std::optional(exact->second);
  }
  return found;
}

Registry::Registry(const XmlDocument& document, base::PerKind<InstalledIds>& ids) {
  for (const base::ComponentKind kind : base::kComponentKinds) {
    const KindTable& table = kKindTables[kind];
    lists_[kind].has_list = static_cast<bool>(document.select_node(table.registry_list));
    const pugi::xpath_node_set entries = SelectNodes(document, table.registered);
    lists_[kind].entries.reserve(entries.size());
    for (const pugi::xpath_node& entry : entries) {
      AddEntry(entry.node(), lists_[kind], ids[kind]);
    }
  }
}

// Usually the id is the first attribute, which is what counts as the id of what is installed.
void Registry::AddEntry(const pugi::xml_node& entry, InstalledEntries& list, InstalledIds& ids) {
  InstalledEntry& kept = list.entries.emplace_back(KeepEntry(entry, texts_));
  const pugi::xml_attribute first = entry.first_attribute();
  const bool is_id_first = IsSameName(first.name(), "id");
  if (kept.id) {
    kept.number = ids.Add(*kept.id, kept.is_child_of_list && is_id_first);
  }
  if (!kept.is_child_of_list || is_id_first) {
    return;
  }
  if (first) {
    ids.AddInstalled(first.value());
  } else {
    ids.AddMissing();
  }
}

std::string_view Needed(const InstalledEntry::Text& text) {
  if (!text) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *text;
}

}  // namespace kitbay::catalog
