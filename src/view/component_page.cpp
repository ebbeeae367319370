#include "view/component_page.h"

namespace kitbay::view {

ComponentPage::ComponentPage(base::ErrorLog& log, const platform::Files& files,
                             const base::Settings& settings,
                             const platform::VersionResource& version_resource,
                             platform::MainWindow& window)
    : rows(log, document, state),
      registry_files(files, settings),
      versions(log, settings, version_resource),
      local(log, registry_files, versions, rows),
      available(log, files, settings, versions, shown, rows),
      installed(log, files, settings, registry_files, sources, available, shown, rows),
      new_listing(log, files, settings, registry_files, sources, new_components, rows),
      buttons(log, document, state, window),
      tabs(log, document, state, local, buttons),
      categories(log, document, state, local, installed, new_listing, buttons) {}

}  // namespace kitbay::view
