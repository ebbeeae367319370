#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::view {

/// A row that was written: its id, the name that it shows, as markup, and its element.
struct ListedRow {
  std::string id;
  std::string name;
  platform::HtmlNodeRef node;
};

/// What is remembered about a list since it was last filled, so that nobody needs to walk through
/// its rows.
struct PageList {
  /// The index of the row with that id.
  std::optional<std::size_t> IndexOf(const std::string& id) const;

  /// The list's element, looked up once per listing.
  platform::HtmlNodeRef element;

  /// The tab bar under which the list was fitted; empty if it was not.
  std::string tab_bar;

  std::vector<ListedRow> rows;

  /// The open row; empty if all are closed.
  platform::HtmlNodeRef open_row;

  /// The row that Tab reaches; empty if there is none.
  platform::HtmlNodeRef tab_stop;

  /// Whether the closed rows have the colours of closed rows. New rows have no colours.
  bool is_coloured = false;
};

/// The lists of the page that is shown. Everything is forgotten when another page is shown.
class PageLists {
 public:
  /// The list with that id, in its current state.
  PageList& Of(const PageDocument& page, const std::string& container);

  /// All lists that were requested, by their ids.
  std::map<std::string, PageList>& All(const PageDocument& page);

  /// The list with that id, about to be filled again: its element, looked up on the page. Fails
  /// with 91 if the page has none.
  const platform::HtmlNodeRef& Begin(const PageDocument& page, const std::string& container);

 private:
  std::map<std::string, PageList> lists_;
  int page_ = 0;
};

/// Sets a list's height to what its tab bar leaves of the page, and never to less than 0. Fails as
/// the page's members do.
void FitUnderBar(const PageDocument& page, const platform::HtmlNodeRef& list,
                 const platform::HtmlNodeRef& bar);

}  // namespace kitbay::view
