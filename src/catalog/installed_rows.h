#pragma once

#include <string>
#include <vector>

namespace kitbay::catalog {

/// What the rows of the last listing with update status show, in row order, and which ids it met.
struct InstalledRows {
  std::vector<std::string> ids;
  std::vector<std::string> names;
  std::vector<std::string> versions;
  std::vector<std::string> descriptions;
  std::vector<std::string> installed_ids;

  /// Whether some update source had a manifest that the listing could use.
  bool is_answered = false;

  void ClearRows() {
    ids.clear();
    names.clear();
    versions.clear();
    descriptions.clear();
  }
};

}  // namespace kitbay::catalog
