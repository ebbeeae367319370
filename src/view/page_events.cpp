#include "view/page_events.h"

#include <functional>

#include "base/guarded.h"
#include "base/text.h"
#include "catalog/installed_tables.h"
#include "catalog/manifest_tables.h"
#include "view/page_ids.h"
#include "view/page_keys.h"
#include "view/row_focus.h"
#include "view/row_nodes.h"

namespace kitbay::view {
namespace {

using platform::HtmlNodeRef;

constexpr base::PerKind<void (PageCommands::*)()> kUpdates = {
    .addon = &PageCommands::UpdateInstalledAddon,
    .transport = &PageCommands::UpdateInstalledTransport,
    .channel = &PageCommands::UpdateInstalledChannel};

// The arguments of `RemoveAddon` for each kind.
struct Removal {
  const char* action;
  const char* kind;
};
constexpr base::PerKind<Removal> kRemovals = {
    .addon = {.action = "Uninstall", .kind = "Addon"},
    .transport = {.action = "UninstallTransport", .kind = ""},
    .channel = {.action = "UninstallChannel", .kind = "Channel"}};

}  // namespace

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
  if (base::ToLower(source->TagName()) == "input") {
    PressButton(source);
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
  if (!parent || !IsTab(source->Id())) {
    return false;
  }
  const std::string bar = parent->Id();
  return (bar == catalog::kUpdatesBar || bar == catalog::kInstalledBar) &&
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

void PageEvents::PressButton(const HtmlNodeRef& button) {
  const HtmlNodeRef container = ParentOf(RowOfButton(button));
  if (!container) {
    return;
  }
  const std::string id = container->Id();
  PressInstalled(id, base::ToLower(button->Value()) == "update");
  PressInstall(id, button);
}

void PageEvents::PressInstalled(const std::string& container, bool is_update) {
  for (const base::ComponentKind kind : base::kComponentKinds) {
    if (container != kInstalledContainers[kind]) {
      continue;
    }
    if (is_update) {
      std::invoke(kUpdates[kind], commands_);
    } else {
      commands_.RemoveAddon(kRemovals[kind].action, kRemovals[kind].kind);
    }
  }
}

void PageEvents::PressInstall(const std::string& container, const HtmlNodeRef& button) {
  for (const base::ComponentKind kind : base::kComponentKinds) {
    if (container == kUpdatedContainers[kind]) {
      constexpr std::size_t kPanelPrefix = 3;
      state_.current_row_id = PanelOfButton(button)->Id().substr(kPanelPrefix);
      state_.current_row_name = NameMarkup(RowOfButton(button));
      const std::string name = ShownName(RowOfButton(button));
      buttons_.DisableOtherDownload();
      if (!commands_.InstallNewAddons(container, name)) {
        buttons_.EnableOtherDownload();
      }
    }
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
