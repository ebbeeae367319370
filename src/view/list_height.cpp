#include "view/list_height.h"

#include <algorithm>
#include <string>

namespace kitbay::view {

void FitUnderBar(const PageDocument& page, const platform::HtmlNodeRef& list,
                 const platform::HtmlNodeRef& bar) {
  const int height = page.document().BodyClientHeight() - bar->StylePixelHeight();
  list->SetStyle("height", std::to_string(std::max(0, height)));
}

}  // namespace kitbay::view
