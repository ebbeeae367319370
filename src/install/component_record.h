#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace kitbay::install {

/// The values of a component's manifest entry, slot by slot. The component's kind decides what is
/// in which slot.
inline constexpr std::size_t kRecordSlots = 11;
using ComponentRecord = std::array<std::string, kRecordSlots>;

/// The slot of the id, whatever the kind.
inline constexpr std::size_t kIdSlot = 0;

/// The slots of an addon.
namespace addon_slot {
inline constexpr std::size_t kProgid = 1;
inline constexpr std::size_t kName = 2;
inline constexpr std::size_t kDescription = 3;
inline constexpr std::size_t kFilename = 4;
inline constexpr std::size_t kCategory = 5;
inline constexpr std::size_t kAutoaccept = 6;
inline constexpr std::size_t kRulesEngine = 7;
inline constexpr std::size_t kOcxEngine = 8;
inline constexpr std::size_t kType = 9;
inline constexpr std::size_t kOffline = 10;
}  // namespace addon_slot

/// The slots of a transport.
namespace transport_slot {
inline constexpr std::size_t kProgid = 1;
inline constexpr std::size_t kFilename = 2;
inline constexpr std::size_t kName = 3;
inline constexpr std::size_t kCategory = 4;
inline constexpr std::size_t kVersion = 5;
inline constexpr std::size_t kDisplayname = 6;
inline constexpr std::size_t kInstructions = 7;
inline constexpr std::size_t kUseApplicationLogin = 8;
}  // namespace transport_slot

/// The slots of a channel.
namespace channel_slot {
inline constexpr std::size_t kProgid = 1;
inline constexpr std::size_t kXmlFilename = 2;
inline constexpr std::size_t kVersion = 3;
inline constexpr std::size_t kDescription = 4;
inline constexpr std::size_t kCategory = 5;
inline constexpr std::size_t kName = 6;
inline constexpr std::size_t kFilename = 7;
}  // namespace channel_slot

}  // namespace kitbay::install
