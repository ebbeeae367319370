#pragma once

#include <string>
#include <string_view>

#include "base/settings.h"

namespace kitbay::catalog {

/// The paths of the suite's two registry files: the datastore, shared with the main client, and the
/// user's custom registry.
std::string DatastorePath(const base::Settings& settings);
std::string CustomRegistryPath(const base::Settings& settings);

/// Whether an entry's `core` text marks a component that the user may not remove: "1" and every
/// text that sorts after it.
bool IsCore(std::string_view core);

}  // namespace kitbay::catalog
