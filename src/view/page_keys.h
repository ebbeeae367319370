#pragma once

#include "platform/html_document.h"
#include "view/page_document.h"
#include "view/page_lists.h"
#include "view/row_focus.h"

namespace kitbay::view {

/// What the keys do on the tabs and rows of the page: arrows, Home and End move the focus, Enter
/// and Space click.
class PageKeys {
 public:
  PageKeys(const PageDocument& page, PageLists& lists) : page_(page), lists_(lists) {}

  /// Handles a key pressed on `source`; returns false if the key has no meaning here. Fails as the
  /// page's members do.
  bool Press(const platform::HtmlNodeRef& source, int key);

 private:
  static bool PressOnTab(const platform::HtmlNodeRef& tab, const platform::HtmlNodeRef& bar,
                         int key);
  bool PressOnRow(const RowPlace& place, int key);

  const PageDocument& page_;
  PageLists& lists_;
};

}  // namespace kitbay::view
