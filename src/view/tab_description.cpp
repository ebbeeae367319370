#include "view/tab_description.h"

#include <string>

#include "base/text.h"
#include "view/page_ids.h"

namespace kitbay::view {
namespace {

using platform::HtmlNodeRef;

constexpr base::PerKind<const char*> kTexts = {
    .addon = "Addons", .transport = "Messaging services", .channel = "Channels"};

const char* TextOf(const std::string& tab) {
  for (const base::ComponentKind kind : base::kComponentKinds) {
    if (tab == kTabs[kind]) {
      return kTexts[kind];
    }
  }
  return "";
}

}  // namespace

void DescribeTabs(const HtmlNodeRef& bar) {
  bar->SetProperty("role", "tablist");
  for (const HtmlNodeRef& tab : bar->Children()) {
    tab->SetProperty("role", "tab");
    tab->SetProperty("alt", TextOf(tab->Id()));
    tab->SetProperty("tabIndex", "0");
    SaySelected(tab, ShowsSelected(tab->Src()));
  }
}

void SaySelected(const HtmlNodeRef& tab, bool is_selected) {
  tab->SetProperty("ariaSelected", is_selected ? "true" : "false");
}

bool ShowsSelected(const std::string& src) { return base::AfterLastSlash(src).starts_with('i'); }

}  // namespace kitbay::view
