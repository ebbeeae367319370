#pragma once

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/available_updates.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_components.h"
#include "catalog/installed_rows.h"
#include "catalog/installed_with_updates.h"
#include "catalog/manifest_trust.h"
#include "catalog/new_component_listing.h"
#include "catalog/new_components.h"
#include "catalog/update_source_list.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/version_resource.h"
#include "view/page_buttons.h"
#include "view/page_categories.h"
#include "view/page_document.h"
#include "view/page_list_writer.h"
#include "view/page_rows.h"
#include "view/page_tabs.h"
#include "view/view_state.h"

namespace kitbay::view {

/// The assembled page of components: its document and state, the lists of the catalog that fill it,
/// and the procedures that switch it.
struct ComponentPage {
  ComponentPage(base::ErrorLog& log, const platform::Files& files, const platform::Clock& clock,
                const base::Settings& settings, const platform::VersionResource& version_resource,
                platform::MainWindow& window);
  ComponentPage(const ComponentPage&) = delete;
  ComponentPage& operator=(const ComponentPage&) = delete;

  PageDocument document;
  ViewState state;
  PageRows rows;
  PageListWriter lists;

  catalog::UpdateSourceList sources;
  catalog::ManifestTrust trust;
  catalog::CatalogFiles catalog_files;
  catalog::FileVersions versions;
  catalog::InstalledRows shown;
  catalog::NewComponents new_components;
  catalog::InstalledComponents local;
  catalog::AvailableUpdates available;
  catalog::InstalledWithUpdates installed;
  catalog::NewComponentListing new_listing;

  PageButtons buttons;
  PageTabs tabs;
  PageCategories categories;
};

}  // namespace kitbay::view
