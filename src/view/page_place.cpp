#include "view/page_place.h"

#include <algorithm>

#include "base/guarded.h"

namespace kitbay::view {
namespace {

using base::guarded;

constexpr const char* kName = "Kitbay::PagePlace";

}  // namespace

PagePlace::PagePlace(base::ErrorLog& log, const PageDocument& page, ViewState& state)
    : log_(log), page_(page), state_(state) {
  if (!page_.IsConnected()) {
    return;
  }
  guarded(log_, kName, [&] {
    for (const auto& [container, list] : state_.lists.All(page_)) {
      if (!list.rows.empty()) {
        scrolled_[container] = list.element->ScrollTop();
      }
    }
    focused_ = RowFocus(page_, state_.lists).Focused();
    if (focused_) {
      focused_name_ = state_.lists.Of(page_, focused_->container).rows.at(focused_->index).name;
    }
  });
}

void PagePlace::Restore() {
  guarded(log_, kName, [&] {
    if (focused_) {
      RestoreFocus(*focused_);
    }
    for (const auto& [container, top] : scrolled_) {
      if (top > 0) {
        state_.lists.Of(page_, container).element->SetScrollTop(top);
      }
    }
  });
}

void PagePlace::RestoreFocus(RowPlace place) const {
  const PageList& list = state_.lists.Of(page_, place.container);
  const auto& rows = list.rows;
  if (rows.empty()) {
    RowFocus(page_, state_.lists).GiveToTab(list.tab_bar);
    return;
  }
  place.index = std::min(place.index, rows.size() - 1);
  if (rows[place.index].name != focused_name_) {
    const auto same = std::find_if(rows.begin(), rows.end(),
                                   [&](const ListedRow& row) { return row.name == focused_name_; });
    if (same != rows.end()) {
      place.index = static_cast<std::size_t>(same - rows.begin());
    }
  }
  RowFocus(page_, state_.lists).Give(place);
}

}  // namespace kitbay::view
