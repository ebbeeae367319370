#pragma once

#include <string_view>

#include "base/component_kind.h"

namespace kitbay::view {

/// The category switch, and which of its child nodes is the Updates control.
inline constexpr const char* kCategory = "category";
inline constexpr int kUpdatesControl = 3;

/// The two controls of the category switch.
inline constexpr const char* kInstalledControl = "installed";
inline constexpr const char* kUpdateControl = "update";

/// The tab images, which both bars have.
inline constexpr base::PerKind<const char*> kTabs = {
    .addon = "addons", .transport = "trans", .channel = "channels"};

inline constexpr base::PerKind<const char*> kInstalledContainers = {
    .addon = "installedaddons", .transport = "installedtransports", .channel = "installedchannels"};

inline constexpr base::PerKind<const char*> kUpdatedContainers = {
    .addon = "updatedaddons", .transport = "updatedtransports", .channel = "updatedchannels"};

/// Whether `id` is that of a tab image, or of one of the six containers.
bool IsTab(std::string_view id);
bool IsContainer(std::string_view id);

}  // namespace kitbay::view
