#include "view/tab_description.h"

#include <string>
#include <vector>

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

std::string TabFolderFor(const platform::Looks& looks) {
  constexpr int kWhole = 96;
  constexpr int kHalfMore = 144;
  const int dots = looks.dots_per_inch;
  const char* percent = dots <= kWhole ? "100" : (dots <= kHalfMore ? "150" : "200");
  const std::string folder = (looks.has_dark_colours ? "dark" : "light") + std::string(percent);
  return folder == "light100" ? "" : "tabs/" + folder + "/";
}

void ShowTabImages(const PageDocument& page, const std::string& folder) {
  for (const char* id : {kInstalledBar, kUpdatesBar}) {
    const HtmlNodeRef bar = page.document().AllItem(id);
    for (const HtmlNodeRef& tab : bar ? bar->Children() : std::vector<HtmlNodeRef>()) {
      tab->SetSrc(folder + base::AfterLastSlash(tab->Src()));
    }
  }
}

bool ShowsSelected(const std::string& src) { return base::AfterLastSlash(src).starts_with('i'); }

}  // namespace kitbay::view
