#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/html_document.h"
#include "view/page_document.h"
#include "view/page_lists.h"

namespace kitbay::view {

/// A row of a list of the page: its list's id, and which of the list's rows it is.
struct RowPlace {
  std::string container;
  std::size_t index = 0;
};

/// The keyboard's way through the rows. Tab reaches one row of each list, at first the first one;
/// from there the arrow keys go on. Failures are as for the page's members.
class RowFocus {
 public:
  RowFocus(const PageDocument& page, PageLists& lists) : page_(page), lists_(lists) {}

  /// The row that an element of the page is, or stands in.
  std::optional<RowPlace> Around(const platform::HtmlNodeRef& element) const;

  /// The row that has the focus, itself or with one of its buttons.
  std::optional<RowPlace> Focused() const;

  /// Lets Tab reach that row of its list, and no other.
  void MakeTabStop(const RowPlace& place) const;

  /// Gives the focus to a row; scrolls to it.
  void MoveTo(const RowPlace& place) const;

  /// Gives the focus to a row where it is, also while another window of the program has the user's.
  void Give(const RowPlace& place) const;

  /// Before buttons are switched off: the row of the button that has the focus takes it over.
  void TakeFromButton() const;

  /// Takes a row off the page; the next one gets its focus and its place on the way of Tab, or else
  /// the one before.
  void RemoveRow(const RowPlace& place) const;

 private:
  const platform::HtmlNodeRef& Row(const RowPlace& place) const;

  const PageDocument& page_;
  PageLists& lists_;
};

}  // namespace kitbay::view
