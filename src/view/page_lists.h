#pragma once

#include <map>
#include <string>

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::view {

/// What is remembered of a list since it was last filled, so that nobody has to walk through its
/// rows for it.
struct PageList {
  /// The list's element, looked up once for a listing.
  platform::HtmlNodeRef element;

  /// The row that is open; empty while all are closed.
  platform::HtmlNodeRef open_row;

  /// Whether the closed rows have the colours of closed rows. As they are made they have none.
  bool is_coloured = false;
};

/// The lists of the page that is shown. All is forgotten when another page is.
class PageLists {
 public:
  /// The list with that id, as it stands.
  PageList& Of(const PageDocument& page, const std::string& container);

  /// The list with that id, about to be filled again: its element, looked up on the page. Fails
  /// with 91 when the page has none.
  const platform::HtmlNodeRef& Begin(const PageDocument& page, const std::string& container);

 private:
  std::map<std::string, PageList> lists_;
  int page_ = 0;
};

}  // namespace kitbay::view
