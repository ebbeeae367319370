#pragma once

#include <string>
#include <vector>

namespace kitbay::catalog {

/// The components for which the last listing with update status has rows.
struct InstalledRows {
  std::vector<std::string> ids;  ///< in row order

  /// Whether some update source had a manifest that the listing could use.
  bool is_answered = false;
};

}  // namespace kitbay::catalog
