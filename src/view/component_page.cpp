#include "view/component_page.h"

namespace kitbay::view {

ComponentPage::ComponentPage(base::ErrorLog& log, const platform::Files& files,
                             const platform::Clock& clock, const base::Settings& settings,
                             const platform::VersionResource& version_resource,
                             platform::MainWindow& window)
    : rows(log, document, state),
      lists(rows),
      trust(log, clock, sources),
      catalog_files(files, settings, trust),
      versions(log, settings, version_resource),
      local(log, catalog_files, versions, lists),
      available(log, catalog_files, versions, shown, lists),
      installed(log, catalog_files, settings, sources, available, shown, lists),
      new_listing(log, catalog_files, sources, new_components, lists),
      buttons(log, document, state, window),
      tabs(log, document, state, local, buttons),
      categories({log, document, state, catalog_files, local, installed, new_listing, buttons}) {}

}  // namespace kitbay::view
