#pragma once

#include "base/component_kind.h"

namespace kitbay::catalog {

/// The bar of tab images above the installed lists and the element that holds it.
inline constexpr const char* kInstalledBarHolder = "imgtab";
inline constexpr const char* kInstalledBar = "itabencloser";
inline constexpr const char* kInstalledBarMarkup =
    "<span class='styleclass' style='background:gray;  width:100%; height:33px; "
    "position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' );'><img "
    "src='utrans.gif' id='trans' ><img src='uaddons.gif' id='addons' ></span>";

/// What is specific to one kind in the installed listings.
struct InstalledTable {
  const char* container;       ///< the element that gets the rows
  const char* heading;         ///< the list's heading
  const char* nothing;         ///< status line of an empty list with update status
  const char* nothing_local;   ///< status line of an empty local list
  const char* registry_list;   ///< the element with the kind's entries
  const char* entries;         ///< the kind's entries, at any depth of their element
  const char* custom_entries;  ///< what counts as the custom registry's entries
};

// Deliberate: the custom registry's paths for addons and transports match nothing, and the
// transports' two status lines are spelled differently.
inline constexpr base::PerKind<InstalledTable> kInstalledTables = {
    .addon = {.container = "installedaddons",
              .heading = "Currently Installed  Addons",
              .nothing = "No Addon is installed.",
              .nothing_local = "No Addon is installed.",
              .registry_list = "root/addons",
              .entries = "root/addons//addon",
              .custom_entries = "root/addonss//addon"},
    .transport = {.container = "installedtransports",
                  .heading = "Currently Installed  Messaging Services",
                  .nothing = "No Messaging service is installed.",
                  .nothing_local = "No Messaging Service is installed.",
                  .registry_list = "root/transports",
                  .entries = "root/transports//transport",
                  .custom_entries = "root/transport//transports"},
    .channel = {.container = "installedchannels",
                .heading = "Currently Installed Channels",
                .nothing = "No Channel is installed.",
                .nothing_local = "No Channel is installed.",
                .registry_list = "root/channels",
                .entries = "root/channels//channel",
                .custom_entries = "root/channels//channel"},
};

}  // namespace kitbay::catalog
