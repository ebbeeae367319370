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

  /// Handles a key that went down on `source`; false when it means nothing here. Failures are as
  /// for the page's members.
  bool Press(const platform::HtmlNodeRef& source, int key);

 private:
  static bool PressOnTab(const platform::HtmlNodeRef& tab, const platform::HtmlNodeRef& bar,
                         int key);
  bool PressOnRow(const RowPlace& place, int key);

  const PageDocument& page_;
  PageLists& lists_;
};

}  // namespace kitbay::view
