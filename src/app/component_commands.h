#pragma once

#include <string>

#include "install/removal.h"
#include "install/update_flows.h"
#include "update/update_requests.h"
#include "view/page_buttons.h"
#include "view/page_commands.h"
#include "view/view_state.h"

namespace kitbay::app {

/// Starts what the buttons of the page's rows ask for.
class ComponentCommands : public view::PageCommands {
 public:
  ComponentCommands(update::UpdateRequests& requests, install::UpdateFlows& updates,
                    install::Removal& removal, view::PageButtons& buttons, view::ViewState& state)
      : requests_(requests),
        updates_(updates),
        removal_(removal),
        buttons_(buttons),
        state_(state) {}

  void UpdateInstalledAddon() override { updates_.UpdateInstalledAddon(); }
  void UpdateInstalledTransport() override { updates_.UpdateInstalledTransport(); }
  void UpdateInstalledChannel() override { updates_.UpdateInstalledChannel(); }

  void RemoveAddon(const std::string& action, const std::string& kind) override {
    removal_.RemoveAddon(action, kind);
  }

  /// With an installation under way the buttons of what is installed are off, too, and no update is
  /// in progress any more, be it that the last one's download failed.
  bool InstallNewAddons(const std::string& container, const std::string& name) override;

 private:
  update::UpdateRequests& requests_;
  install::UpdateFlows& updates_;
  install::Removal& removal_;
  view::PageButtons& buttons_;
  view::ViewState& state_;
};

}  // namespace kitbay::app
