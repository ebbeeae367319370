#include "view/page_events.h"

#include "base/guarded.h"
#include "catalog/installed_tables.h"
#include "view/page_ids.h"

namespace kitbay::view {
namespace {

using platform::HtmlNodeRef;

HtmlNodeRef ParentOf(const HtmlNodeRef& node) { return node ? node->ParentElement() : nullptr; }

bool IsTabOfABar(const HtmlNodeRef& source, const HtmlNodeRef& parent) {
  if (!parent || !IsTab(source->Id())) {
    return false;
  }
  const std::string bar = parent->Id();
  return bar == kUpdatesBar || bar == catalog::kInstalledBar;
}

}  // namespace

void PageEvents::doc_onclick() {
  base::guarded(log_, "Kitbay::doc_onclick", [&] {
    if (const HtmlNodeRef source = page_.document().EventSource()) {
      Dispatch(source);
    }
  });
}

void PageEvents::Dispatch(const HtmlNodeRef& source) {
  const HtmlNodeRef parent = ParentOf(source);
  if (IsTabOfABar(source, parent) && tabs_.ShowInstalledTab()) {
    return;
  }
  const HtmlNodeRef great_grandparent = ParentOf(ParentOf(parent));
  if (great_grandparent && IsContainer(great_grandparent->Id())) {
    tabs_.HideOthers(parent);
  }
}

bool PageEvents::doc_ondragstart() {
  constexpr bool kMayDrag = false;
  base::guarded(log_, " Kitbay::doc_ondragstart", [] {});
  return kMayDrag;
}

}  // namespace kitbay::view
