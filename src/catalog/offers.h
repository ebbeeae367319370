#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/component_kind.h"
#include "catalog/installed_entries.h"
#include "catalog/kept_texts.h"
#include "catalog/kind_tables.h"
#include "catalog/package_digest.h"
#include "catalog/xml_document.h"

namespace kitbay::catalog {

/// A component that a manifest offers and that is not installed.
struct NewOffer {
  std::string_view id;
  std::string_view name;
  std::string_view version;
  std::string_view description;
  std::string_view url;
};

/// What a manifest offers of one kind, as far as the lists need it: versions of what is installed,
/// and what is new.
class OfferList {
 public:
  /// `signed_manifest` is the manifest's file name if its source signs, and empty otherwise.
  OfferList(const XmlDocument& manifest, const KindTable& table, const InstalledIds& installed,
            const std::string& signed_manifest, KeptTexts& texts);

  /// Whether the manifest has an element for offers of the kind.
  bool exists() const { return exists_; }

  /// Whether the first entry with the id of `entry` offers a newer version than `installed`. Throws
  /// 91 if it has no version, or if an entry without an id precedes it.
  bool HasNewer(const InstalledEntry& entry, std::string_view installed) const;

  /// The new components up to the first entry that lacks one of its texts.
  const std::vector<NewOffer>& new_offers() const { return new_offers_; }

  /// The digests of their packages, if the source signs.
  const std::vector<PackageDigest>& digests() const { return digests_; }

  /// Throws 91 if there is an entry that lacks one of its texts.
  void DemandTexts() const;

 private:
  void AddVersion(const pugi::xml_node& entry, std::size_t number, KeptTexts& texts);
  void AddNewOffer(const pugi::xml_node& entry, const std::string& signed_manifest,
                   KeptTexts& texts);

  bool exists_;
  std::vector<std::string_view> versions_;  // by the numbers of the ids; null if there is none
  std::unordered_set<std::size_t> without_version_;
  bool lacks_id_ = false;
  std::vector<NewOffer> new_offers_;
  std::vector<PackageDigest> digests_;
  bool lacks_text_ = false;
};

/// What the lists need from a manifest.
class Offers {
 public:
  /// `signed_manifest` as for `OfferList`.
  Offers(const XmlDocument& manifest, const base::PerKind<InstalledIds>& installed,
         const std::string& signed_manifest);

  const OfferList& operator[](base::ComponentKind kind) const { return lists_[kind]; }

 private:
  KeptTexts texts_;
  base::PerKind<OfferList> lists_;
};

}  // namespace kitbay::catalog
