#pragma once

#include <map>
#include <optional>
#include <string>

#include "base/error_log.h"
#include "view/page_document.h"
#include "view/row_focus.h"
#include "view/view_state.h"

namespace kitbay::view {

/// Where the user is on the page, kept while lists are filled again: how far each list is scrolled,
/// and which row has the focus. A failure is logged, and what failed is not kept.
class PagePlace {
 public:
  PagePlace(base::ErrorLog& log, const PageDocument& page, ViewState& state);

  /// Scrolls the lists back, and gives the focus to the row of the same component, or else to the
  /// row at the same position.
  void Restore();

 private:
  void RestoreFocus(RowPlace place) const;

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
  std::map<std::string, int> scrolled_;
  std::optional<RowPlace> focused_;
  std::string focused_name_;
};

}  // namespace kitbay::view
