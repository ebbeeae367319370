#pragma once

#include <string_view>

#include "base/component_kind.h"
#include "catalog/installed_tables.h"
#include "catalog/manifest_tables.h"

namespace kitbay::view {

/// The category switch, and the index of the Updates control among its child nodes.
inline constexpr const char* kCategory = "category";
inline constexpr int kUpdatesControl = 3;

/// The two controls of the category switch.
inline constexpr const char* kInstalledControl = "installed";
inline constexpr const char* kUpdateControl = "update";

/// The page's base, which says what folder the tab images are in.
inline constexpr const char* kImageBase = "images";

/// What is said while there is nothing to show.
inline constexpr const char* kNotice = "notice";

/// The tab images, which both bars have.
inline constexpr base::PerKind<const char*> kTabs = {
    .addon = catalog::kManifestTables.addon.tab,
    .transport = catalog::kManifestTables.transport.tab,
    .channel = catalog::kManifestTables.channel.tab};

/// The lists of the two categories.
inline constexpr base::PerKind<const char*> kInstalledContainers = {
    .addon = catalog::kInstalledTables.addon.container,
    .transport = catalog::kInstalledTables.transport.container,
    .channel = catalog::kInstalledTables.channel.container};

inline constexpr base::PerKind<const char*> kUpdatedContainers = {
    .addon = catalog::kManifestTables.addon.container,
    .transport = catalog::kManifestTables.transport.container,
    .channel = catalog::kManifestTables.channel.container};

/// Whether `id` is the id of a tab image, or of one of the six containers.
bool IsTab(std::string_view id);
bool IsContainer(std::string_view id);

}  // namespace kitbay::view
