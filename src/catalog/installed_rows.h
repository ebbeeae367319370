#pragma once

#include <string>
#include <vector>

namespace kitbay::catalog {

/// Which components the last listing with update status has rows of.
struct InstalledRows {
  std::vector<std::string> ids;  ///< in row order

  /// Whether some update source had a manifest that the listing could use.
  bool is_answered = false;
};

}  // namespace kitbay::catalog
