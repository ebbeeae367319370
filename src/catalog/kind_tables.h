#pragma once

#include "base/component_kind.h"

namespace kitbay::catalog {

/// Where a kind's entries are in the XML files.
struct KindTable {
  const char* registry_list;   ///< the element of a registry file with the entries
  const char* registered;      ///< the entries, at any depth of that element
  const char* custom_entries;  ///< what counts as the custom registry's entries
  const char* manifest_list;   ///< the element of a manifest with the offers
  const char* offers;          ///< the offers, at any depth of that element
};

// Deliberate: the custom registry's paths for addons and transports match nothing.
inline constexpr base::PerKind<KindTable> kKindTables = {
    .addon = {.registry_list = "root/addons",
              .registered = "root/addons//addon",
              .custom_entries = "root/addonss//addon",
              .manifest_list = "components/addons",
              .offers = "components/addons//addon"},
    .transport = {.registry_list = "root/transports",
                  .registered = "root/transports//transport",
                  .custom_entries = "root/transport//transports",
                  .manifest_list = "components/transports",
                  .offers = "components/transports//transport"},
    .channel = {.registry_list = "root/channels",
                .registered = "root/channels//channel",
                .custom_entries = "root/channels//channel",
                .manifest_list = "components/channels",
                .offers = "components/channels//channel"},
};

}  // namespace kitbay::catalog
