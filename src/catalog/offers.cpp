#include "catalog/offers.h"

#include <array>

#include "base/failure.h"
#include "catalog/entry_texts.h"
#include "catalog/version_rule.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using base::RuntimeError;

InstalledIds::Found Find(const InstalledIds& ids, const pugi::xml_attribute& id) {
  return id ? ids.Find(id.value()) : InstalledIds::Found();
}

}  // namespace

OfferList::OfferList(const XmlDocument& manifest, const KindTable& table,
                     const InstalledIds& installed, const std::string& signed_manifest,
                     KeptTexts& texts)
    : exists_(manifest.select_node(table.manifest_list)), versions_(installed.count()) {
  const pugi::xpath_node_set entries = SelectNodes(manifest, table.offers);
  new_offers_.reserve(entries.size());
  for (const pugi::xpath_node& selected : entries) {
    const pugi::xml_node entry = selected.node();
    // Usually the id is the first attribute.
    const pugi::xml_attribute first = entry.first_attribute();
    const bool is_id = IsSameName(first.name(), "id");
    const pugi::xml_attribute id = is_id ? first : entry.attribute("id");
    const auto [is_known, number] = Find(installed, id);
    const bool is_installed = is_id ? is_known : Find(installed, first).is_installed;
    // The entries after one without an id are not compared.
    lacks_id_ = lacks_id_ || !id;
    if (number && !lacks_id_) {
      AddVersion(entry, *number, texts);
    }
    if (!is_installed && !lacks_text_) {
      AddNewOffer(entry, signed_manifest, texts);
    }
  }
}

// The first entry of an id counts.
void OfferList::AddVersion(const pugi::xml_node& entry, std::size_t number, KeptTexts& texts) {
  if (versions_[number].data() != nullptr || without_version_.contains(number)) {
    return;
  }
  if (const auto version = KeepText(entry.child("version"), texts)) {
    versions_[number] = *version;
  } else {
    without_version_.insert(number);
  }
}

void OfferList::AddNewOffer(const pugi::xml_node& entry, const std::string& signed_manifest,
                            KeptTexts& texts) {
  const auto children = FindChildren(entry, std::array{"name", "version", "description", "url"});
  const auto id = KeepText(entry.attribute("id"), texts);
  const auto name = KeepText(children[0], texts);
  const auto version = KeepText(children[1], texts);
  const auto description = KeepText(children[2], texts);
  const auto url = KeepText(children[3], texts);
  if (!id || !name || !version || !description || !url) {
    lacks_text_ = true;
    return;
  }
  new_offers_.push_back(
      {.id = *id, .name = *name, .version = *version, .description = *description, .url = *url});
  if (!signed_manifest.empty()) {
    digests_.push_back(ReadDigest(signed_manifest, entry));
  }
}

bool OfferList::HasNewer(const InstalledEntry& entry, std::string_view installed) const {
  const std::string_view offered = versions_[entry.number];
  if (offered.data() != nullptr) {
    return IsNewer(installed, offered);
  }
  if (lacks_id_ || without_version_.contains(entry.number)) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return false;
}

void OfferList::DemandTexts() const {
  if (lacks_text_) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
}

Offers::Offers(const XmlDocument& manifest, const base::PerKind<InstalledIds>& installed,
               const std::string& signed_manifest)
    : lists_{
          .addon = {manifest, kKindTables.addon, installed.addon, signed_manifest, texts_},
          .transport = {manifest, kKindTables.transport, installed.transport, signed_manifest,
                        texts_},
          .channel = {manifest, kKindTables.channel, installed.channel, signed_manifest, texts_}} {}

}  // namespace kitbay::catalog
