#pragma once

#include "app/suite_rights.h"
#include "install/removal.h"
#include "install/update_flows.h"
#include "update/update_requests.h"
#include "view/page_buttons.h"
#include "view/page_events.h"
#include "view/view_state.h"

namespace kitbay::app {

/// Starts what the buttons of the page's rows stand for. If the user may not change the suite, each
/// button says so instead.
class ComponentCommands : public view::PageCommands {
 public:
  ComponentCommands(update::UpdateRequests& requests, install::UpdateFlows& updates,
                    install::Removal& removal, view::PageButtons& buttons, view::ViewState& state,
                    SuiteRights& rights)
      : requests_(requests),
        updates_(updates),
        removal_(removal),
        buttons_(buttons),
        state_(state),
        rights_(rights) {}

  void UpdateInstalled(const view::Click& click) override;
  void RemoveAddon(const view::Click& click) override;

  /// While an installation is under way, the buttons of installed components are off too. No update
  /// is in progress any more, even if the last one's download failed.
  bool InstallNewAddons(const view::Click& click) override;

 private:
  update::UpdateRequests& requests_;
  install::UpdateFlows& updates_;
  install::Removal& removal_;
  view::PageButtons& buttons_;
  view::ViewState& state_;
  SuiteRights& rights_;
};

}  // namespace kitbay::app
