#include "view/page_buttons.h"

#include <vector>

#include "base/guarded.h"
#include "view/page_ids.h"
#include "view/row_focus.h"
#include "view/row_markup.h"

namespace kitbay::view {
namespace {

using base::guarded;
using platform::HtmlNodeRef;

// A row's button cell is four elements deep, so the buttons of a whole list are fetched at once.
std::vector<HtmlNodeRef> ButtonsOf(const HtmlNodeRef& container) {
  return container->ElementsByTag("input");
}

}  // namespace

void PageButtons::DisableOtherDownload() {
  guarded(log_, "Kitbay::DisableOtherDownload ", [&] { SwitchNewComponents(true); });
}

void PageButtons::EnableOtherDownload() {
  guarded(log_, "Kitbay::EnableOtherDownload ", [&] { SwitchNewComponents(false); });
}

void PageButtons::DisableOtherUpdatedDownload() {
  guarded(log_, "Kitbay::DisableOtherUpdatedDownload ", [&] { SwitchInstalled(true); });
}

void PageButtons::EnableOtherUpdatedDownload() {
  guarded(log_, "Kitbay::EnableOtherUpdatedDownload ", [&] { SwitchInstalled(false); });
}

void PageButtons::SwitchNewComponents(bool off) {
  state_.download_in_progress = off;
  if (off) {
    RowFocus(page_, state_.lists).TakeFromButton();
  }
  for (const base::ComponentKind kind : base::kComponentKinds) {
    for (const HtmlNodeRef& button : ButtonsOf(page_.Element(kUpdatedContainers[kind]))) {
      if (button->Id() == kActionButton) {
        button->SetDisabled(off);
      }
    }
  }
}

void PageButtons::SwitchInstalled(bool off) {
  state_.download_in_progress = off;
  if (off) {
    RowFocus(page_, state_.lists).TakeFromButton();
  }
  for (const base::ComponentKind kind : base::kComponentKinds) {
    for (const HtmlNodeRef& button : ButtonsOf(page_.Element(kInstalledContainers[kind]))) {
      button->SetDisabled(off);
    }
  }
}

void PageButtons::DisableRelisted() {
  if (state_.download_in_progress) {
    DisableOtherUpdatedDownload();
    DisableOtherDownload();
  }
}

void PageButtons::DisableStatus() {
  guarded(log_, "Kitbay::DisableStatus ", [&] {
    window_.status_bar().SetPanelText(platform::kStatusPanel, "");
    window_.progress_bar().SetVisible(false);
  });
}

}  // namespace kitbay::view
