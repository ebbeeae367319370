#pragma once

#include <string>
#include <vector>

namespace kitbay::catalog {

/// The update sources of this run: URLs without a scheme, host followed by path.
struct UpdateSourceList {
  std::vector<std::string> UpdateSources;   ///< all sources, in the order of the user's list
  std::vector<std::string> PendingSources;  ///< those still to be asked
  bool UsedCachedManifest = false;          ///< whether a manifest on disk serves for some source
};

}  // namespace kitbay::catalog
