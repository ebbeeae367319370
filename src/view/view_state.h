#pragma once

#include <string>

namespace kitbay::view {

/// What the procedures of the page share.
struct ViewState {
  /// True while a download or an installation runs; rows made meanwhile have their buttons off.
  bool download_in_progress = false;

  /// True while an installed component is being updated.
  bool update_in_progress = false;

  /// True while the installed lists show the registry files as they are, with update status.
  bool installed_lists_current = false;

  /// True while the page shows what can be installed instead of what is.
  bool updates_category = false;

  /// The number of the row that was last clicked to be installed, updated or removed.
  std::string current_row_id;
};

}  // namespace kitbay::view
