#include "view/page_tabs.h"

#include <functional>
#include <utility>

#include "base/guarded.h"
#include "view/page_ids.h"
#include "view/page_lists.h"
#include "view/page_place.h"
#include "view/row_nodes.h"
#include "view/tab_description.h"

namespace kitbay::view {
namespace {

using base::ComponentKind;
using base::guarded;
using platform::HtmlNodeRef;

void Colour(const HtmlNodeRef& row, const char* background, const char* text) {
  row->SetStyle("background", background);
  row->SetStyle("color", text);
}

void OpenRow(const HtmlNodeRef& row) {
  Colour(row, "navy", "white");
  Needed(NameOf(row))->SetStyle("fontWeight", "800");
  Needed(PanelOf(row))->SetStyle("display", "");
  row->SetProperty("ariaExpanded", "true");
}

void CloseRow(const HtmlNodeRef& row) {
  Colour(row, "white", "black");
  Needed(NameOf(row))->SetStyle("fontWeight", "");
  Needed(PanelOf(row))->SetStyle("display", "none");
  row->SetProperty("ariaExpanded", "false");
}

// Gives new rows, which are already closed, the colours of closed rows.
void ColourClosedRows(const PageList& list, const std::string& open_row) {
  for (const ListedRow& row : list.rows) {
    if (row.id != open_row && IsRow(row.node)) {
      Colour(row.node, "white", "black");
    }
  }
}

}  // namespace

void PageTabs::showImage(const std::string& tab, const HtmlNodeRef& bar) {
  guarded(log_, "Kitbay::showImage", [&] {
    const int count = Needed(bar)->ChildCount();
    for (int i = 0; i < count; ++i) {
      const HtmlNodeRef image = Needed(bar->Child(i));
      const std::string id = image->Id();
      image->SetSrc(state_.tab_folder + (id == tab ? "i" : "u") + id + ".gif");
      SaySelected(image, id == tab);
    }
  });
}

void PageTabs::ShowAddons(const std::string& addons, const std::string& channels,
                          const std::string& transports) {
  guarded(log_, "Kitbay::ShowAddons", [&] {
    page_.SetShown(addons, true);
    page_.SetShown(channels, false);
    page_.SetShown(transports, false);
  });
}

void PageTabs::ShowTransports(const std::string& addons, const std::string& channels,
                              const std::string& transports) {
  guarded(log_, "Kitbay::ShowTransports", [&] {
    page_.SetShown(transports, true);
    page_.SetShown(addons, false);
    page_.SetShown(channels, false);
  });
}

void PageTabs::ShowChannels(const std::string& addons, const std::string& channels,
                            const std::string& transports) {
  guarded(log_, "Kitbay::ShowChannels", [&] {
    page_.SetShown(channels, true);
    page_.SetShown(addons, false);
    page_.SetShown(transports, false);
  });
}

void PageTabs::ShowOnlyInstalled() {
  guarded(log_, "Kitbay::ShowOnlyInstalled ", [&] {
    page_.SetShown(kUpdatedContainers.addon, false);
    page_.SetShown(kUpdatedContainers.channel, false);
    page_.SetShown(kUpdatedContainers.transport, false);
  });
}

void PageTabs::ShowOnlyUpdated() {
  guarded(log_, "Kitbay::ShowOnlyUpdated ", [&] {
    page_.SetShown(kInstalledContainers.addon, false);
    page_.SetShown(kInstalledContainers.transport, false);
    page_.SetShown(kInstalledContainers.channel, false);
  });
}

bool PageTabs::ShowInstalledTab() {
  bool handled = false;
  guarded(log_, "Kitbay::ShowInstalledTab", [&] {
    const auto kind = ClickedTab(kInstalledBar);
    if (!kind) {
      return;
    }
    ShowOnlyInstalled();
    ShowKind(*kind, kInstalledContainers);
    if (!state_.installed_lists_current) {
      RebuildInstalledKind(*kind);
    }
    handled = true;
  });
  return handled;
}

bool PageTabs::ShowUpdatedTab() {
  bool handled = false;
  guarded(log_, "Kitbay::ShowUpdatedTab", [&] {
    const auto kind = ClickedTab(kUpdatesBar);
    if (!kind) {
      return;
    }
    ShowOnlyUpdated();
    ShowKind(*kind, kUpdatedContainers);
    handled = true;
  });
  return handled;
}

// The kind of the clicked tab of `bar`, whose image is selected; none if another element was
// clicked.
std::optional<ComponentKind> PageTabs::ClickedTab(const char* bar) {
  const HtmlNodeRef source = Needed(page_.document().EventSource());
  const HtmlNodeRef parent = source->ParentElement();
  const std::string tab = source->Id();
  const auto kind = KindOfTab(tab);
  if (!kind || !parent || parent->Id() != bar) {
    return std::nullopt;
  }
  showImage(tab, parent);
  return kind;
}

void PageTabs::ShowKind(ComponentKind kind, const base::PerKind<const char*>& containers) {
  constexpr base::PerKind<void (PageTabs::*)(const std::string&, const std::string&,
                                             const std::string&)>
      kShow = {.addon = &PageTabs::ShowAddons,
               .transport = &PageTabs::ShowTransports,
               .channel = &PageTabs::ShowChannels};
  std::invoke(kShow[kind], this, containers.addon, containers.channel, containers.transport);
}

void PageTabs::RebuildInstalledKind(ComponentKind kind) {
  constexpr base::PerKind<void (catalog::InstalledComponents::*)()> kList = {
      .addon = &catalog::InstalledComponents::InitialInstalledAddons,
      .transport = &catalog::InstalledComponents::InitialInstalledTransports,
      .channel = &catalog::InstalledComponents::InitialInstalledChannels};
  PagePlace place(log_, page_, state_);
  std::invoke(kList[kind], installed_);
  buttons_.DisableRelisted();
  place.Restore();
}

// The clicked row first, so that the user sees it. The others have been closed since they were
// created, except the one that was opened last: a long list is walked through only once.
void PageTabs::HideOthers(const HtmlNodeRef& name_line) {
  guarded(log_, "Kitbay::HideOthers", [&] {
    const HtmlNodeRef clicked = Needed(Needed(name_line)->ParentElement());
    const std::string clicked_id = clicked->Id();
    const HtmlNodeRef container = Needed(clicked->ParentElement());
    PageList& list = state_.lists.Of(page_, container->Id());
    OpenRow(clicked);
    const HtmlNodeRef before = std::exchange(list.open_row, clicked);
    if (before && before->Id() != clicked_id) {
      CloseRow(before);
    }
    if (!list.is_coloured) {
      ColourClosedRows(list, clicked_id);
      list.is_coloured = true;
    }
  });
}

void PageTabs::FollowLooks(const platform::Looks& looks) {
  guarded(log_, "Kitbay::FollowLooks", [&] {
    const std::string folder = TabFolderFor(looks);
    const bool is_other = std::exchange(state_.tab_folder, folder) != folder;
    if (!page_.IsConnected()) {
      return;
    }
    if (is_other) {
      ShowTabImages(page_, folder);
    }
    if (const HtmlNodeRef pane = page_.document().AllItem(kPane)) {
      pane->SetProperty("className", looks.has_dark_colours ? "dark" : "");
    }
  });
}

void PageTabs::FitLists() {
  guarded(log_, "Kitbay::FitLists", [&] {
    for (const auto& [container, list] : state_.lists.All(page_)) {
      if (!list.tab_bar.empty()) {
        FitUnderBar(page_, list.element, page_.Element(list.tab_bar));
      }
    }
  });
}

void PageTabs::ShowLocalData() {
  guarded(log_, "Kitbay::ShowLocalData", [&] {
    page_.UpdatesControl()->SetDisabled(true);
    state_.installed_lists_current = false;
    PagePlace place(log_, page_, state_);
    installed_.InitialInstalledChannels();
    buttons_.DisableRelisted();
    place.Restore();
  });
}

}  // namespace kitbay::view
