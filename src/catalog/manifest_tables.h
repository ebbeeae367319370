#pragma once

#include "base/component_kind.h"

namespace kitbay::catalog {

/// The bar of tab images above the lists of new components and the element that holds it.
inline constexpr const char* kUpdatesBarHolder = "imgtab1";
inline constexpr const char* kUpdatesBar = "tabencloser";
inline constexpr const char* kUpdatesBarMarkup =
    "<span class='styleclass' style='background:gray; width:100%; height:33px; "
    "position:relative; display:none;' id='tabencloser'><img src='ichannels.gif' "
    "id='channels'><img src='utrans.gif' id='trans'><img src='uaddons.gif' id='addons' ></span>";

/// What is specific to one kind in the lists of new components.
struct ManifestTable {
  const char* container;      ///< the element that gets new components
  const char* tab;            ///< the kind's image in the bar
  const char* heading;        ///< the new list's heading
  const char* nothing;        ///< shown in place of an empty new list
  const char* manifest_list;  ///< the element of a manifest with the kind's entries
  const char* entries;        ///< the kind's entries, at any depth of their element
  const char* installed;      ///< the entries of a registry file whose ids are installed
};

inline constexpr base::PerKind<ManifestTable> kManifestTables = {
    .addon = {.container = "updatedaddons",
              .tab = "addons",
              .heading = "New Addons Available:",
              .nothing = "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No "
                         "additional Addons available right now<hr style='height:1pt; '></font>",
              .manifest_list = "components/addons",
              .entries = "components/addons//addon",
              .installed = "root/addons/addon"},
    .transport = {.container = "updatedtransports",
                  .tab = "trans",
                  .heading = "New Messaging Services Available:",
                  .nothing =
                      "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No "
                      "additional Messaging Services available right now<hr style='height:1pt; "
                      "'></font>",
                  .manifest_list = "components/transports",
                  .entries = "components/transports//transport",
                  .installed = "root/transports/transport"},
    .channel = {.container = "updatedchannels",
                .tab = "channels",
                .heading = "New Channels Available:",
                .nothing = "<font style='font-family:verdana; font-size:11;  "
                           "margin-right:4pt;'>No additional Channels available right now<hr "
                           "style='height:1pt; '></font>",
                .manifest_list = "components/channels",
                .entries = "components/channels//channel",
                .installed = "root/channels/channel"},
};

}  // namespace kitbay::catalog
