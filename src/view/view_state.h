#pragma once

#include <string>

#include "view/page_lists.h"

namespace kitbay::view {

/// What the procedures of the page share.
struct ViewState {
  /// True while a download or an installation runs; the buttons of rows created meanwhile are
  /// disabled.
  bool download_in_progress = false;

  /// True while an installed component is being updated.
  bool update_in_progress = false;

  /// True while the installed lists show the current registry files, with update status.
  bool installed_lists_current = false;

  /// True while the page shows what can be installed instead of what is.
  bool updates_category = false;

  /// The number of the row that was last clicked to be installed, updated or removed; empty if that
  /// row is gone.
  std::string current_row_id;

  /// The name that the row shows, as `NameMarkup` returns it: when its list is filled again, rows
  /// get other numbers.
  std::string current_row_name;

  /// The folder of the tab images for the user's colours and resolution: empty for the page's own,
  /// or with a slash at its end.
  std::string tab_folder;

  PageLists lists;
};

}  // namespace kitbay::view
