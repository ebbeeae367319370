#include "app/component_commands.h"

namespace kitbay::app {

void ComponentCommands::UpdateInstalledAddon() {
  if (rights_.DemandChange()) {
    updates_.UpdateInstalledAddon();
  }
}

void ComponentCommands::UpdateInstalledTransport() {
  if (rights_.DemandChange()) {
    updates_.UpdateInstalledTransport();
  }
}

void ComponentCommands::UpdateInstalledChannel() {
  if (rights_.DemandChange()) {
    updates_.UpdateInstalledChannel();
  }
}

void ComponentCommands::RemoveAddon(const std::string& action, const std::string& kind) {
  if (rights_.DemandChange()) {
    removal_.RemoveAddon(action, kind);
  }
}

bool ComponentCommands::InstallNewAddons(const std::string& container, const std::string& name) {
  if (!rights_.DemandChange()) {
    return false;
  }
  state_.update_in_progress = false;
  // Disabled before the request, because the answer may arrive while the request is handed over.
  buttons_.DisableOtherUpdatedDownload();
  if (!requests_.InstallNewAddons(container, name, state_.current_row_id,
                                  state_.current_row_name)) {
    buttons_.EnableOtherUpdatedDownload();
    return false;
  }
  return true;
}

}  // namespace kitbay::app
