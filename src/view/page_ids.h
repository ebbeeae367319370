#pragma once

#include <optional>
#include <string_view>

#include "base/component_kind.h"

namespace kitbay::view {

/// The category switch, and the index of the Updates control among its child nodes.
inline constexpr const char* kCategory = "category";
inline constexpr int kUpdatesControl = 3;

/// The two controls of the category switch.
inline constexpr const char* kInstalledControl = "installed";
inline constexpr const char* kUpdateControl = "update";

/// The element with the tab bars and the lists. Its class says whether the user's colours are dark.
inline constexpr const char* kPane = "pane";

/// What is said while there is nothing to show.
inline constexpr const char* kNotice = "notice";

/// The bar of tab images above the installed lists, and the element that holds it.
inline constexpr const char* kInstalledBarHolder = "imgtab";
inline constexpr const char* kInstalledBar = "itabencloser";
inline constexpr const char* kInstalledBarMarkup =
    "<span class='styleclass' style='background:gray;  width:100%; height:33px; "
    "position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' );'><img "
    "src='utrans.gif' id='trans' ><img src='uaddons.gif' id='addons' ></span>";

/// The same above the lists of new components.
inline constexpr const char* kUpdatesBarHolder = "imgtab1";
inline constexpr const char* kUpdatesBar = "tabencloser";
inline constexpr const char* kUpdatesBarMarkup =
    "<span class='styleclass' style='background:gray; width:100%; height:33px; "
    "position:relative; display:none;' id='tabencloser'><img src='ichannels.gif' "
    "id='channels'><img src='utrans.gif' id='trans'><img src='uaddons.gif' id='addons' ></span>";

/// The tab images, which both bars have.
inline constexpr base::PerKind<const char*> kTabs = {
    .addon = "addons", .transport = "trans", .channel = "channels"};

/// The lists of the two categories.
inline constexpr base::PerKind<const char*> kInstalledContainers = {
    .addon = "installedaddons", .transport = "installedtransports", .channel = "installedchannels"};
inline constexpr base::PerKind<const char*> kUpdatedContainers = {
    .addon = "updatedaddons", .transport = "updatedtransports", .channel = "updatedchannels"};

/// The texts of a kind's lists: their headings, and the texts in place of an empty list.
struct ListTexts {
  const char* installed;
  const char* nothing_installed;
  const char* nothing_local;
  const char* offered;
  const char* nothing_offered;
};

// Deliberate: the transports' two status lines are spelled differently.
inline constexpr base::PerKind<ListTexts> kListTexts = {
    .addon = {.installed = "Currently Installed  Addons",
              .nothing_installed = "No Addon is installed.",
              .nothing_local = "No Addon is installed.",
              .offered = "New Addons Available:",
              .nothing_offered =
                  "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No "
                  "additional Addons available right now<hr style='height:1pt; '></font>"},
    .transport = {.installed = "Currently Installed  Messaging Services",
                  .nothing_installed = "No Messaging service is installed.",
                  .nothing_local = "No Messaging Service is installed.",
                  .offered = "New Messaging Services Available:",
                  .nothing_offered =
                      "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No "
                      "additional Messaging Services available right now<hr style='height:1pt; "
                      "'></font>"},
    .channel = {.installed = "Currently Installed Channels",
                .nothing_installed = "No Channel is installed.",
                .nothing_local = "No Channel is installed.",
                .offered = "New Channels Available:",
                .nothing_offered =
                    "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No "
                    "additional Channels available right now<hr style='height:1pt; '></font>"}};

/// The kind whose tab image has that id; none for any other id.
std::optional<base::ComponentKind> KindOfTab(std::string_view id);

/// Whether `id` is the id of one of the six containers.
bool IsContainer(std::string_view id);

}  // namespace kitbay::view
