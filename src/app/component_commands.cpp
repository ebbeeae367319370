#include "app/component_commands.h"

#include "view/page_ids.h"

namespace kitbay::app {

bool ComponentCommands::InstallNewAddons(const std::string& container, const std::string& name) {
  if (!requests_.InstallNewAddons(container, name)) {
    return false;
  }
  for (const base::ComponentKind kind : base::kComponentKinds) {
    if (container == view::kUpdatedContainers[kind]) {
      pending_packages_[kind].row_id = state_.current_row_id;
    }
  }
  buttons_.DisableOtherUpdatedDownload();
  return true;
}

}  // namespace kitbay::app
