#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "catalog/installed_components.h"
#include "platform/main_window.h"
#include "view/page_buttons.h"
#include "view/page_document.h"
#include "view/view_state.h"

namespace kitbay::view {

/// Shows and hides the page's tab bars and containers. Every procedure logs its failure and leaves
/// what it has shown and hidden so far.
class PageTabs {
 public:
  PageTabs(base::ErrorLog& log, const PageDocument& page, ViewState& state,
           catalog::InstalledComponents& installed, PageButtons& buttons)
      : log_(log), page_(page), state_(state), installed_(installed), buttons_(buttons) {}

  /// Gives the clicked tab of `bar` its selected image and every other tab its unselected one.
  void showImage(const std::string& tab, const platform::HtmlNodeRef& bar);

  /// Each shows one of the three containers of a category and hides the other two.
  void ShowAddons(const std::string& addons, const std::string& channels,
                  const std::string& transports);
  void ShowTransports(const std::string& addons, const std::string& channels,
                      const std::string& transports);
  void ShowChannels(const std::string& addons, const std::string& channels,
                    const std::string& transports);

  /// Hides the containers of the Updates category.
  void ShowOnlyInstalled();

  /// Hides the containers of the Installed category.
  void ShowOnlyUpdated();

  /// Each handles the current click if it is on a tab of its category's bar, and returns whether it
  /// was.
  bool ShowInstalledTab();
  bool ShowUpdatedTab();

  /// Opens the row of the clicked name line and closes the other rows of its container.
  void HideOthers(const platform::HtmlNodeRef& name_line);

  /// Applies these looks to the page from now on: the tabs in the variant for the colours and the
  /// resolution, and in dark colours every row in the user's own colours.
  void FollowLooks(const platform::Looks& looks);

  /// Fits the lists under their bars again: the page is shown in another size.
  void FitLists();

  /// Fills the page when no update source can be asked; shows what is installed without update
  /// status.
  void ShowLocalData();

 private:
  std::optional<base::ComponentKind> ClickedTab(const char* bar);
  void ShowKind(base::ComponentKind kind, const base::PerKind<const char*>& containers);
  void RebuildInstalledKind(base::ComponentKind kind);

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
  catalog::InstalledComponents& installed_;
  PageButtons& buttons_;
};

}  // namespace kitbay::view
