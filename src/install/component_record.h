#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "base/component_kind.h"
#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"

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

/// The first entry of `id`, ignoring case, in the update sources' manifests, in the order of the
/// sources; or in the manifest with the file name `only_manifest`, unless that is empty. The entry
/// lives as long as the refresh of `files` in which it was requested. A manifest that does not load
/// is skipped. Throws `base::Failure` (91) if no manifest has the entry.
pugi::xml_node FindManifestEntry(catalog::CatalogFiles& files,
                                 const catalog::UpdateSourceList& sources, base::ComponentKind kind,
                                 const std::string& id, const std::string& only_manifest = "");

/// What the entry says, slot by slot. Throws `base::Failure` (91) if one of its texts is missing;
/// only `useapplicationlogin` may be.
ComponentRecord ReadRecord(base::ComponentKind kind, const pugi::xml_node& entry);

/// The entry's libraries; an empty text is an empty list. Fails as `ReadRecord` does.
std::vector<std::string> ReadLibraryList(base::ComponentKind kind, const pugi::xml_node& entry);

}  // namespace kitbay::install
