#include "view/page_lists.h"

#include <algorithm>
#include <string>
#include <utility>

namespace kitbay::view {

std::optional<std::size_t> PageList::IndexOf(const std::string& id) const {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [&](const ListedRow& listed) { return listed.id == id; });
  if (row == rows.end()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(row - rows.begin());
}

std::map<std::string, PageList>& PageLists::All(const PageDocument& page) {
  if (page_ != page.Number()) {
    lists_.clear();
    page_ = page.Number();
  }
  return lists_;
}

PageList& PageLists::Of(const PageDocument& page, const std::string& container) {
  return All(page)[container];
}

// The height of a list that is filled again without a heading stays.
const platform::HtmlNodeRef& PageLists::Begin(const PageDocument& page,
                                              const std::string& container) {
  PageList& list = Of(page, container);
  std::string tab_bar = std::exchange(list, {}).tab_bar;
  list.element = page.Element(container);
  list.tab_bar = std::move(tab_bar);
  return list.element;
}

void FitUnderBar(const PageDocument& page, const platform::HtmlNodeRef& list,
                 const platform::HtmlNodeRef& bar) {
  const int height = page.document().BodyClientHeight() - bar->StylePixelHeight();
  list->SetStyle("height", std::to_string(std::max(0, height)));
}

}  // namespace kitbay::view
