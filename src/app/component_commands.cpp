#include "app/component_commands.h"

namespace kitbay::app {

void ComponentCommands::UpdateInstalled(const view::Click& click) {
  if (rights_.DemandChange()) {
    updates_.UpdateInstalled(click);
  }
}

void ComponentCommands::RemoveAddon(const view::Click& click) {
  if (rights_.DemandChange()) {
    removal_.RemoveAddon(click);
  }
}

bool ComponentCommands::InstallNewAddons(const view::Click& click) {
  if (!rights_.DemandChange()) {
    return false;
  }
  state_.update_in_progress = false;
  // Disabled before the request, because the answer may arrive while the request is handed over.
  buttons_.DisableOtherUpdatedDownload();
  if (!requests_.InstallNewAddons(click)) {
    buttons_.EnableOtherUpdatedDownload();
    return false;
  }
  return true;
}

}  // namespace kitbay::app
