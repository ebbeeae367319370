#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/html_document.h"
#include "view/page_document.h"
#include "view/page_lists.h"

namespace kitbay::view {

/// A row of a list on the page: its list's id, and its index in the list.
struct RowPlace {
  std::string container;
  std::size_t index = 0;
};

/// Moves the keyboard focus through the rows. Tab reaches one row of each list, initially the first
/// one; from there the arrow keys go on. Fails as the page's members do.
class RowFocus {
 public:
  RowFocus(const PageDocument& page, PageLists& lists) : page_(page), lists_(lists) {}

  /// The row that an element of the page is or belongs to.
  std::optional<RowPlace> Around(const platform::HtmlNodeRef& element) const;

  /// The row that has the focus, itself or on one of its buttons.
  std::optional<RowPlace> Focused() const;

  /// Makes that row the one of its list that Tab reaches.
  void MakeTabStop(const RowPlace& place) const;

  /// Gives the focus to a row and scrolls to it.
  void MoveTo(const RowPlace& place) const;

  /// Gives the focus to a row where it is, even while another window of the program has the user's
  /// focus.
  void Give(const RowPlace& place) const;

  /// Gives the focus to the selected tab of a bar, if there is one.
  void GiveToTab(const std::string& bar) const;

  /// Before buttons are disabled: the row of the focused button takes over the focus.
  void TakeFromButton() const;

  /// Removes a row from the page. The next row, or else the previous one, gets its focus and its
  /// place in the Tab order; the last row leaves the focus to its list's tab.
  void RemoveRow(const RowPlace& place) const;

 private:
  const platform::HtmlNodeRef& Row(const RowPlace& place) const;

  const PageDocument& page_;
  PageLists& lists_;
};

}  // namespace kitbay::view
