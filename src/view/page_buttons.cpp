#include "view/page_buttons.h"

#include "base/guarded.h"
#include "base/text.h"
#include "view/page_ids.h"
#include "view/row_nodes.h"

namespace kitbay::view {
namespace {

using base::guarded;
using platform::HtmlNodeRef;

bool IsButton(const HtmlNodeRef& node) { return base::ToLower(node->TagName()) == "input"; }

template <typename Visit>
void ForEachButtonCell(const HtmlNodeRef& container, Visit visit) {
  const int count = container->ChildCount();
  for (int i = 0; i < count; ++i) {
    if (const HtmlNodeRef cell = ButtonCellOf(container->Child(i))) {
      visit(cell);
    }
  }
}

void SwitchFirst(const HtmlNodeRef& cell, bool off) {
  const int count = cell->ChildCount();
  for (int i = 0; i < count; ++i) {
    const HtmlNodeRef child = Needed(cell->Child(i));
    if (IsButton(child)) {
      child->SetDisabled(off);
      return;
    }
  }
}

void SwitchAll(const HtmlNodeRef& cell, bool off) {
  const int count = cell->ChildCount();
  for (int i = 0; i < count; ++i) {
    const HtmlNodeRef child = Needed(cell->Child(i));
    if (IsButton(child)) {
      child->SetDisabled(off);
    }
  }
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
  for (const base::ComponentKind kind : base::kComponentKinds) {
    ForEachButtonCell(page_.Element(kUpdatedContainers[kind]),
                      [&](const HtmlNodeRef& cell) { SwitchFirst(cell, off); });
  }
}

void PageButtons::SwitchInstalled(bool off) {
  state_.download_in_progress = off;
  for (const base::ComponentKind kind : base::kComponentKinds) {
    ForEachButtonCell(page_.Element(kInstalledContainers[kind]),
                      [&](const HtmlNodeRef& cell) { SwitchAll(cell, off); });
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
