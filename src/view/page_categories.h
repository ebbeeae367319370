#pragma once

#include <string>

#include "base/error_log.h"
#include "catalog/catalog_files.h"
#include "catalog/installed_components.h"
#include "catalog/installed_with_updates.h"
#include "catalog/new_component_listing.h"
#include "view/page_buttons.h"
#include "view/page_document.h"
#include "view/page_tabs.h"
#include "view/view_state.h"

namespace kitbay::view {

/// What the switch of categories works with.
struct CategoryParts {
  base::ErrorLog& log;
  const PageDocument& page;
  ViewState& state;
  catalog::CatalogFiles& files;
  catalog::InstalledComponents& local;
  catalog::InstalledWithUpdates& installed;
  catalog::NewComponentListing& new_components;
  PageButtons& buttons;
};

/// Switches the page between what is installed and what can be installed, and fills it once the
/// update sources have answered. Every procedure logs its failure and leaves what it has shown and
/// hidden so far. Each procedure that fills lists reads every file once for all of them.
class PageCategories {
 public:
  explicit PageCategories(const CategoryParts& parts)
      : log_(parts.log),
        page_(parts.page),
        state_(parts.state),
        files_(parts.files),
        local_(parts.local),
        installed_(parts.installed),
        new_components_(parts.new_components),
        buttons_(parts.buttons) {}

  /// Gives each tab image of the bar in `target` the picture of the image at the same position in
  /// `source`.
  void ChangeImages(const std::string& source, const std::string& target);

  void ShowInstalledCategory();

  /// Does nothing while the Updates control is disabled.
  void ShowUpdatedCategory();

  /// Shows the container of the selected tab of the bar in `holder` and hides the other two.
  void PreserveTab(const std::string& addons, const std::string& transports,
                   const std::string& channels, const std::string& holder);

  /// Fills every list after the update sources have answered.
  void ShowDetails();

  /// Enables the Updates control and shows the details. Throws 91 if the page has no such control.
  void OfferUpdates();

 private:
  void ListInstalledAddons();
  void ListInstalledTransports();
  void ListInstalledChannels();
  void showInstalled();
  void showUpdate();
  int HiddenTabs(const platform::HtmlNodeRef& bar) const;
  bool HasUpdatesBar() const;
  void CarrySelectedTab();
  void PressCategory(bool updates);

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
  catalog::CatalogFiles& files_;
  catalog::InstalledComponents& local_;
  catalog::InstalledWithUpdates& installed_;
  catalog::NewComponentListing& new_components_;
  PageButtons& buttons_;
};

}  // namespace kitbay::view
