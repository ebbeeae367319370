#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"

namespace kitbay::fakes {

/// What a manifest says about a component. Every text is inserted as markup.
struct Offered {
  std::string id;
  std::string name;
  std::string version = "1";
  std::string description = "d";
  std::optional<std::string> url = {};  ///< "packages.example/ID.zip" by default
  std::string more = {};                ///< further elements
};

inline constexpr base::PerKind<const char*> kManifestLists = {
    .addon = "addons", .transport = "transports", .channel = "channels"};
inline constexpr base::PerKind<const char*> kManifestElements = {
    .addon = "addon", .transport = "transport", .channel = "channel"};

/// The manifest's entry of a component.
inline std::string OfferText(base::ComponentKind kind, const Offered& offered) {
  const std::string element = kManifestElements[kind];
  const std::string url = offered.url.value_or("packages.example/" + offered.id + ".zip");
  const std::string type = kind == base::ComponentKind::kAddon ? " type='tool'" : "";
  return "<" + element + " id='" + offered.id + "'" + type + "><name>" + offered.name +
         "</name><version>" + offered.version + "</version><description>" + offered.description +
         "</description><url>" + url + "</url>" + offered.more + "</" + element + ">";
}

/// A manifest with these entries in its three lists.
inline std::string ManifestText(const std::string& addons, const std::string& transports,
                                const std::string& channels) {
  return "<components><addons>" + addons + "</addons><transports>" + transports +
         "</transports><channels>" + channels + "</channels></components>";
}

/// A manifest with a list of one kind and no other list.
inline std::string ManifestText(base::ComponentKind kind, const std::string& entries) {
  const std::string list = kManifestLists[kind];
  return "<components><" + list + ">" + entries + "</" + list + "></components>";
}

}  // namespace kitbay::fakes
