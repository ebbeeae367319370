#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"
#include "install/clicked_row.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "platform/main_window.h"
#include "update/pending_packages.h"
#include "update/update_requests.h"
#include "view/page_buttons.h"
#include "view/page_document.h"
#include "view/view_state.h"

namespace kitbay::install {

/// What the update flows work with.
struct UpdateParts {
  base::ErrorLog& log;
  const base::Settings& settings;
  catalog::CatalogFiles& manifests;
  platform::MainWindow& window;
  const view::PageDocument& page;
  view::ViewState& state;
  view::PageButtons& buttons;
  const catalog::UpdateSourceList& sources;
  update::UpdateRequests& requests;
  update::PendingPackages& pending_packages;
  MainClient& main_client;
  InstallSession& session;
};

/// Starts the update of the component whose button is being clicked: closes the main client and
/// requests the package, which is installed when it has arrived. Only the manifest of the first
/// update source is searched. A component that it does not list under the row's name is not
/// downloaded, and its button stays off.
class UpdateFlows {
 public:
  explicit UpdateFlows(const UpdateParts& parts) : parts_(parts) {}

  void UpdateInstalledAddon();
  void UpdateInstalledTransport();
  void UpdateInstalledChannel();

 private:
  struct Offer;

  void UpdateInstalled(base::ComponentKind kind);
  bool MayUpdate(base::ComponentKind kind, const ClickedRow& row);
  bool FindOffer(base::ComponentKind kind, Offer& offer);
  void ReadOffer(base::ComponentKind kind, Offer& offer);
  void GetChannelInfo(Offer& offer);
  bool RequestPackage(base::ComponentKind kind, const Offer& offer, const ClickedRow& row);

  UpdateParts parts_;
};

}  // namespace kitbay::install
