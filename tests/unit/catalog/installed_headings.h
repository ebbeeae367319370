#pragma once

namespace kitbay::catalog {

/// What the row writer receives before each list of installed components.
inline constexpr const char* kInstalledAddonHeading =
    "FillDivHeader installedaddons|itabencloser|Currently Installed  Addons";
inline constexpr const char* kInstalledTransportHeading =
    "FillDivHeader installedtransports|itabencloser|Currently Installed  Messaging Services";
inline constexpr const char* kInstalledChannelHeading =
    "FillDivHeader installedchannels|itabencloser|Currently Installed Channels";

}  // namespace kitbay::catalog
