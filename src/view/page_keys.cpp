#include "view/page_keys.h"

#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "view/page_ids.h"
#include "view/row_nodes.h"

namespace kitbay::view {
namespace {

using platform::HtmlNodeRef;

// Virtual key codes.
constexpr int kEnter = 13;
constexpr int kSpace = 32;
constexpr int kEnd = 35;
constexpr int kHome = 36;
constexpr int kLeft = 37;
constexpr int kUp = 38;
constexpr int kRight = 39;
constexpr int kDown = 40;

bool Clicks(int key) { return key == kEnter || key == kSpace; }

/// The position to which a key moves from one of `count` positions; empty if it does not move. Keys
/// do not move past either end.
std::optional<std::size_t> Moved(std::size_t from, std::size_t count, int key, int back,
                                 int forward) {
  if (key == kHome) {
    return 0;
  }
  if (key == kEnd) {
    return count - 1;
  }
  if (key == back) {
    return from == 0 ? 0 : from - 1;
  }
  if (key == forward) {
    return from + 1 == count ? from : from + 1;
  }
  return std::nullopt;
}

/// The visible tabs of a bar.
std::vector<HtmlNodeRef> ShownTabs(const HtmlNodeRef& bar) {
  std::vector<HtmlNodeRef> tabs = bar->Children();
  std::erase_if(
      tabs, [](const HtmlNodeRef& tab) { return base::ToLower(tab->Style("display")) == "none"; });
  return tabs;
}

}  // namespace

bool PageKeys::Press(const HtmlNodeRef& source, int key) {
  const HtmlNodeRef parent = ParentOf(source);
  if (parent && KindOfTab(source->Id())) {
    const std::string bar = parent->Id();
    return (bar == kInstalledBar || bar == kUpdatesBar) && PressOnTab(source, parent, key);
  }
  const auto place = RowFocus(page_, lists_).Around(source);
  if (!place) {
    return false;
  }
  // Within a row, the engine presses buttons and follows links.
  const bool is_row = parent->Id() == place->container;
  return (is_row || !Clicks(key)) && PressOnRow(*place, key);
}

bool PageKeys::PressOnTab(const HtmlNodeRef& tab, const HtmlNodeRef& bar, int key) {
  if (Clicks(key)) {
    tab->Click();
    return true;
  }
  const std::vector<HtmlNodeRef> tabs = ShownTabs(bar);
  const std::string id = tab->Id();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    if (tabs[i]->Id() != id) {
      continue;
    }
    const auto moved = Moved(i, tabs.size(), key, kLeft, kRight);
    if (moved) {
      tabs[*moved]->Focus();
    }
    return moved.has_value();
  }
  return false;
}

bool PageKeys::PressOnRow(const RowPlace& place, int key) {
  const PageList& list = lists_.Of(page_, place.container);
  if (Clicks(key)) {
    Needed(NameOf(list.rows.at(place.index).node))->Click();
    return true;
  }
  const auto moved = Moved(place.index, list.rows.size(), key, kUp, kDown);
  if (moved) {
    RowFocus(page_, lists_).MoveTo({place.container, *moved});
  }
  return moved.has_value();
}

}  // namespace kitbay::view
