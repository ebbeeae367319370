#include "view/page_categories.h"

#include "base/guarded.h"
#include "base/text.h"
#include "view/page_ids.h"
#include "view/page_place.h"
#include "view/tab_description.h"

namespace kitbay::view {
namespace {

using base::ComponentKind;
using base::guarded;
using platform::HtmlNodeRef;

// A tab image's file name without its extension: "i" or "u", then the tab.
std::string ImageName(const std::string& src) {
  const std::string file = base::AfterLastSlash(src);
  return file.substr(0, file.find('.'));
}

}  // namespace

void PageCategories::ChangeImages(const std::string& source, const std::string& target) {
  guarded(log_, "Kitbay::ChangeImages", [&] {
    const HtmlNodeRef from = Needed(page_.Element(source)->ChildNode(0));
    const HtmlNodeRef to = Needed(page_.Element(target)->ChildNode(0));
    const int count = from->ChildNodeCount();
    for (int i = 0; i < count; ++i) {
      const std::string src = Needed(from->ChildNode(i))->Src();
      const HtmlNodeRef tab = Needed(to->ChildNode(i));
      tab->SetSrc(src);
      SaySelected(tab, ShowsSelected(src));
    }
  });
}

// A kind for which no update source has an answer is listed from the local files.
void PageCategories::ListInstalledAddons() {
  if (!installed_.InstalledAddons()) {
    local_.InitialInstalledAddons();
  }
}

void PageCategories::ListInstalledTransports() {
  if (!installed_.InstalledTransports()) {
    local_.InitialInstalledTransports();
  }
}

void PageCategories::ListInstalledChannels() {
  if (!installed_.InstalledChannels()) {
    local_.InitialInstalledChannels();
  }
}

// Until the update sources have answered, the updates have no bar, and only what is installed was
// shown.
bool PageCategories::HasUpdatesBar() const {
  return page_.document().AllItem(kUpdatesBar) != nullptr;
}

// A category opens on the tab that is selected in the other category's bar. That bar follows the
// one that the user sees, even if the category stays the same.
void PageCategories::CarrySelectedTab() {
  if (state_.updates_category) {
    ChangeImages(kUpdatesBarHolder, kInstalledBarHolder);
  } else {
    ChangeImages(kInstalledBarHolder, kUpdatesBarHolder);
  }
}

void PageCategories::ShowInstalledCategory() {
  guarded(log_, "Kitbay::ShowInstalledCategory", [&] {
    const catalog::CatalogFiles::Refresh refresh(files_);
    PagePlace place(log_, page_, state_);
    const bool is_switch = HasUpdatesBar();
    if (is_switch) {
      CarrySelectedTab();
    }
    if (state_.installed_lists_current) {
      ListInstalledAddons();
      ListInstalledChannels();
      ListInstalledTransports();
    } else {
      local_.InitialInstalledAddons();
      local_.InitialInstalledTransports();
      local_.InitialInstalledChannels();
    }
    buttons_.DisableRelisted();
    PressCategory(false);
    if (is_switch) {
      showInstalled();
    }
    place.Restore();
  });
}

void PageCategories::ShowUpdatedCategory() {
  guarded(log_, "Kitbay::ShowUpdatedCategory", [&] {
    if (page_.UpdatesControl()->Disabled()) {
      return;
    }
    const catalog::CatalogFiles::Refresh refresh(files_);
    PagePlace place(log_, page_, state_);
    new_components_.funcShowUpdates();
    new_components_.funcShowTransports();
    new_components_.funcShowChannels();
    buttons_.DisableRelisted();
    CarrySelectedTab();
    PressCategory(true);
    showUpdate();
    place.Restore();
  });
}

void PageCategories::showInstalled() {
  guarded(log_, "Kitbay::showInstalled", [&] {
    page_.SetShown(kInstalledBarHolder, true);
    page_.SetShown(kUpdatesBarHolder, false);
    page_.SetShown(kUpdatesBar, false);
    page_.SetShown(kInstalledBar, true);
    page_.SetShown(kUpdatedContainers.addon, false);
    page_.SetShown(kUpdatedContainers.transport, false);
    page_.SetShown(kUpdatedContainers.channel, false);
    PreserveTab(kInstalledContainers.addon, kInstalledContainers.transport,
                kInstalledContainers.channel, kUpdatesBarHolder);
  });
}

void PageCategories::showUpdate() {
  guarded(log_, "Kitbay::showUpdate ", [&] {
    page_.SetShown(kInstalledBarHolder, false);
    const HtmlNodeRef bar = Needed(page_.Element(kUpdatesBarHolder)->ChildNode(0));
    const bool is_offered = HiddenTabs(bar) < bar->ChildNodeCount();
    page_.SetShown(kUpdatesBarHolder, is_offered);
    page_.SetShown(kUpdatesBar, is_offered);
    if (!is_offered) {
      page_.Element(kUpdatedContainers.addon)
          ->SetInnerHtml(
              "<font style='font-family:verdana; font-size:11; '>No additional modules are "
              "available right now.</font>");
    }
    page_.SetShown(kInstalledBar, false);
    page_.SetShown(kInstalledContainers.addon, false);
    page_.SetShown(kInstalledContainers.channel, false);
    page_.SetShown(kInstalledContainers.transport, false);
    if (is_offered) {
      PreserveTab(kUpdatedContainers.addon, kUpdatedContainers.transport,
                  kUpdatedContainers.channel, kInstalledBarHolder);
    } else {
      page_.SetShown(kUpdatedContainers.addon, true);
      page_.SetShown(kUpdatedContainers.transport, false);
      page_.SetShown(kUpdatedContainers.channel, false);
    }
  });
}

int PageCategories::HiddenTabs(const HtmlNodeRef& bar) const {
  int hidden = 0;
  const int count = bar->ChildNodeCount();
  for (int i = 0; i < count; ++i) {
    hidden += base::ToLower(Needed(bar->ChildNode(i))->Style("display")) == "none" ? 1 : 0;
  }
  return hidden;
}

void PageCategories::PreserveTab(const std::string& addons, const std::string& transports,
                                 const std::string& channels, const std::string& holder) {
  guarded(log_, "Kitbay::PreserveTab", [&] {
    const base::PerKind<std::string> containers = {
        .addon = addons, .transport = transports, .channel = channels};
    const HtmlNodeRef bar = Needed(page_.Element(holder)->ChildNode(0));
    const int count = bar->ChildNodeCount();
    for (int i = 0; i < count; ++i) {
      const HtmlNodeRef image = Needed(bar->ChildNode(i));
      const std::string& container =
          containers[KindOfTab(image->Id()).value_or(ComponentKind::kChannel)];
      const std::string name = ImageName(image->Src());
      if (name.find('i') != std::string::npos) {
        page_.SetShown(container, true);
      } else if (name.find('u') != std::string::npos) {
        page_.SetShown(container, false);
      }
    }
  });
}

void PageCategories::PressCategory(bool updates) {
  const HtmlNodeRef pressed = page_.Element(updates ? kUpdateControl : kInstalledControl);
  const HtmlNodeRef raised = page_.Element(updates ? kInstalledControl : kUpdateControl);
  pressed->SetStyle("border", "2px inset");
  pressed->SetStyle("background", "Window");
  pressed->SetStyle("fontWeight", "bold");
  raised->SetStyle("border", "2px outset");
  raised->SetStyle("background", "");
  raised->SetStyle("fontWeight", "");
  pressed->SetProperty("ariaPressed", "true");
  raised->SetProperty("ariaPressed", "false");
  state_.updates_category = updates;
}

void PageCategories::ShowDetails() {
  guarded(log_, "Kitbay::ShowDetails", [&] {
    const catalog::CatalogFiles::Refresh refresh(files_);
    PagePlace place(log_, page_, state_);
    ListInstalledChannels();
    buttons_.DisableStatus();
    ListInstalledTransports();
    ListInstalledAddons();
    new_components_.funcShowUpdates();
    new_components_.funcShowChannels();
    new_components_.funcShowTransports();
    buttons_.DisableRelisted();
    state_.installed_lists_current = true;
    PressCategory(state_.updates_category);
    if (state_.updates_category) {
      CarrySelectedTab();
      showUpdate();
    }
    place.Restore();
  });
}

void PageCategories::OfferUpdates() {
  page_.UpdatesControl()->SetDisabled(false);
  ShowDetails();
}

}  // namespace kitbay::view
