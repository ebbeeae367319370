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

/// The folder below the page's own with the images for dark backgrounds.
const std::string kDarkFolder = "/dark/";

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

void ShowTabImagesFor(const PageDocument& page, bool dark_colours) {
  const HtmlNodeRef base = page.document().AllItem(kImageBase);
  if (!base) {
    return;
  }
  for (const char* id : {kInstalledBar, kUpdatesBar}) {
    const HtmlNodeRef bar = page.document().AllItem(id);
    for (const HtmlNodeRef& tab : bar ? bar->Children() : std::vector<HtmlNodeRef>()) {
      const std::string src = tab->Src();
      const std::string file = base::AfterLastSlash(src);
      std::string folder = src.substr(0, src.size() - file.size());
      if (folder.ends_with(kDarkFolder)) {
        folder.resize(folder.size() - kDarkFolder.size() + 1);
      }
      base->SetProperty("href", folder + (dark_colours ? kDarkFolder.substr(1) : ""));
      tab->SetSrc(file);
    }
  }
}

bool ShowsSelected(const std::string& src) { return base::AfterLastSlash(src).starts_with('i'); }

}  // namespace kitbay::view
