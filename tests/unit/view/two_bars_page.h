#pragma once

#include <string>

#include "fakes/manifest_text.h"

namespace kitbay::view {

/// A page with both tab bars, the six lists and the category switch.
inline constexpr const char* kTwoBarsPage =
    "<div id='category'><div>Components</div><input type='button' id='installed'><div></div>"
    "<input type='button' id='update'><div id='hint'>Click a name.</div></div>"
    "<div id='imgtab'><span id='itabencloser' style='height:33px'>"
    "<img src='ichannels.gif' id='channels'><img src='utrans.gif' id='trans'>"
    "<img src='uaddons.gif' id='addons'></span></div>"
    "<div id='imgtab1'><span id='tabencloser' style='height:33px; display:none'>"
    "<img src='ichannels.gif' id='channels'><img src='utrans.gif' id='trans'>"
    "<img src='uaddons.gif' id='addons'></span></div>"
    "<div id='installedaddons'></div><div id='installedtransports'></div>"
    "<div id='installedchannels'></div><div id='updatedaddons'></div>"
    "<div id='updatedtransports'></div><div id='updatedchannels'></div>";

/// A datastore with one component of each kind.
inline constexpr const char* kSmallDatastore =
    "<root>"
    "<addons><addon id='notes' name='Notes'><filename>notes.dll</filename>"
    "<description>Keeps notes.</description><core>0</core></addon></addons>"
    "<transports><transport id='relay' name='Relay'><filename>relay.dll</filename>"
    "<description>Sends messages.</description><core>1</core></transport></transports>"
    "<channels><channel id='news' name='News' version='1.0'>"
    "<description>Tells news.</description><core>0</core></channel></channels>"
    "</root>";

/// A manifest that offers one new component of each kind.
inline const std::string kSmallManifest = fakes::ManifestText(
    fakes::OfferText(base::ComponentKind::kAddon,
                     {.id = "polls", .name = "Polls", .version = "1.1", .description = "Asks."}),
    fakes::OfferText(base::ComponentKind::kTransport,
                     {.id = "wire", .name = "Wire", .version = "1.2", .description = "Carries."}),
    fakes::OfferText(base::ComponentKind::kChannel,
                     {.id = "music", .name = "Music", .version = "1.3", .description = "Plays."}));

}  // namespace kitbay::view
