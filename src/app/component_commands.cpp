#include "app/component_commands.h"

namespace kitbay::app {

bool ComponentCommands::InstallNewAddons(const std::string& container, const std::string& name) {
  state_.update_in_progress = false;
  // Before the request, whose answer may arrive while it is handed over.
  buttons_.DisableOtherUpdatedDownload();
  if (!requests_.InstallNewAddons(container, name, state_.current_row_id,
                                  state_.current_row_name)) {
    buttons_.EnableOtherUpdatedDownload();
    return false;
  }
  return true;
}

}  // namespace kitbay::app
