#include "view/page_lists.h"

namespace kitbay::view {

PageList& PageLists::Of(const PageDocument& page, const std::string& container) {
  if (page_ != page.Number()) {
    lists_.clear();
    page_ = page.Number();
  }
  return lists_[container];
}

const platform::HtmlNodeRef& PageLists::Begin(const PageDocument& page,
                                              const std::string& container) {
  PageList& list = Of(page, container);
  list = {};
  list.element = page.Element(container);
  return list.element;
}

}  // namespace kitbay::view
