#include "view/row_focus.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "view/page_ids.h"
#include "view/tab_description.h"

namespace kitbay::view {

using platform::HtmlNodeRef;

const HtmlNodeRef& RowFocus::Row(const RowPlace& place) const {
  return lists_.Of(page_, place.container).rows.at(place.index).node;
}

std::optional<RowPlace> RowFocus::Around(const HtmlNodeRef& element) const {
  HtmlNodeRef below = element;
  for (HtmlNodeRef above = ParentOf(below); above; above = ParentOf(above)) {
    if (const std::string id = above->Id(); IsContainer(id)) {
      const auto index = lists_.Of(page_, id).IndexOf(below->Id());
      return index ? std::optional(RowPlace{id, *index}) : std::nullopt;
    }
    below = above;
  }
  return std::nullopt;
}

std::optional<RowPlace> RowFocus::Focused() const {
  return Around(page_.document().ActiveElement());
}

void RowFocus::MakeTabStop(const RowPlace& place) const {
  HtmlNodeRef& stop = lists_.Of(page_, place.container).tab_stop;
  if (stop) {
    stop->SetProperty("tabIndex", "-1");
  }
  stop = Row(place);
  stop->SetProperty("tabIndex", "0");
}

void RowFocus::MoveTo(const RowPlace& place) const {
  MakeTabStop(place);
  Row(place)->Focus();
}

void RowFocus::Give(const RowPlace& place) const {
  MakeTabStop(place);
  Row(place)->SetActive();
}

void RowFocus::TakeFromButton() const {
  const HtmlNodeRef active = page_.document().ActiveElement();
  if (!active || base::ToLower(active->TagName()) != "input") {
    return;
  }
  if (const auto place = Around(active)) {
    Give(*place);
  }
}

void RowFocus::GiveToTab(const std::string& bar) const {
  const HtmlNodeRef tabs = page_.document().AllItem(bar);
  for (const HtmlNodeRef& tab : tabs ? tabs->Children() : std::vector<HtmlNodeRef>()) {
    if (ShowsSelected(tab->Src())) {
      tab->SetActive();
    }
  }
}

void RowFocus::RemoveRow(const RowPlace& place) const {
  PageList& list = lists_.Of(page_, place.container);
  const auto focused = Focused();
  const bool had_focus =
      focused && focused->container == place.container && focused->index == place.index;
  const bool was_stop = list.tab_stop && list.tab_stop->Id() == list.rows.at(place.index).id;
  Row(place)->RemoveNode(true);
  list.rows.erase(list.rows.begin() + static_cast<std::ptrdiff_t>(place.index));
  if (was_stop) {
    list.tab_stop = nullptr;
  }
  if (list.rows.empty()) {
    if (had_focus) {
      GiveToTab(list.tab_bar);
    }
    return;
  }
  const RowPlace neighbour{place.container, std::min(place.index, list.rows.size() - 1)};
  if (had_focus) {
    Give(neighbour);
  } else if (was_stop) {
    MakeTabStop(neighbour);
  }
}

}  // namespace kitbay::view
