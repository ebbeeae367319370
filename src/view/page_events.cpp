#include "view/page_events.h"

#include <optional>

#include "base/guarded.h"
#include "view/page_ids.h"
#include "view/page_keys.h"
#include "view/row_focus.h"
#include "view/row_nodes.h"

namespace kitbay::view {

using platform::HtmlNodeRef;
void PageEvents::doc_onclick() {
  base::guarded(log_, "Kitbay::doc_onclick", [&] {
    if (const HtmlNodeRef source = page_.document().EventSource()) {
      Dispatch(source);
    }
  });
}

void PageEvents::Dispatch(const HtmlNodeRef& source) {
  if (SwitchCategory(source->Id()) || SwitchTab(source) || OpenRow(source)) {
    return;
  }
  if (const std::optional<Click> click = ReadClick(source)) {
    Perform(*click);
  }
}

bool PageEvents::SwitchCategory(const std::string& id) {
  if (id == kInstalledControl) {
    categories_.ShowInstalledCategory();
    return true;
  }
  if (id == kUpdateControl) {
    categories_.ShowUpdatedCategory();
    return true;
  }
  return false;
}

bool PageEvents::SwitchTab(const HtmlNodeRef& source) {
  const HtmlNodeRef parent = ParentOf(source);
  if (!parent || !KindOfTab(source->Id())) {
    return false;
  }
  const std::string bar = parent->Id();
  return (bar == kUpdatesBar || bar == kInstalledBar) &&
         (tabs_.ShowInstalledTab() || tabs_.ShowUpdatedTab());
}

// The name and the version are in the name line, the name line is in the row.
bool PageEvents::OpenRow(const HtmlNodeRef& source) {
  const HtmlNodeRef name_line = ParentOf(source);
  const HtmlNodeRef container = ParentOf(ParentOf(name_line));
  if (!container || !IsContainer(container->Id())) {
    return false;
  }
  tabs_.HideOthers(name_line);
  const RowFocus focus(page_, state_.lists);
  if (const auto row = focus.Around(name_line)) {
    focus.MakeTabStop(*row);
  }
  return true;
}

void PageEvents::Perform(const Click& click) {
  switch (click.action) {
    case ClickAction::kUpdate:
      return commands_.UpdateInstalled(click);
    case ClickAction::kRemove:
      return commands_.RemoveAddon(click);
    case ClickAction::kInstall:
      return Install(click);
  }
}

void PageEvents::Install(const Click& click) {
  state_.current_row_id = click.row_id;
  state_.current_row_name = click.row_name;
  static_cast<void>(click.Name());  // a row without one fails before any button is disabled
  buttons_.DisableOtherDownload();
  if (!commands_.InstallNewAddons(click)) {
    buttons_.EnableOtherDownload();
  }
}

bool PageEvents::doc_onkeydown() {
  bool is_handled = false;
  base::guarded(log_, "Kitbay::doc_onkeydown", [&] {
    const HtmlNodeRef source = page_.document().EventSource();
    const platform::KeyPress key = page_.document().EventKey();
    if (source && !key.control && !key.alt && !key.shift) {
      is_handled = PageKeys(page_, state_.lists).Press(source, key.code);
    }
  });
  return !is_handled;
}

void PageEvents::window_onresize() { tabs_.FitLists(); }

// Guarded under its name like every handler, although it does nothing.
bool PageEvents::doc_ondragstart() {
  constexpr bool kMayDrag = false;
  base::guarded(log_, " Kitbay::doc_ondragstart", [] {});
  return kMayDrag;
}

}  // namespace kitbay::view
