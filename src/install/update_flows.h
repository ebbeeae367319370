#pragma once

#include <optional>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "platform/main_window.h"
#include "update/package_receiver.h"
#include "update/update_requests.h"
#include "view/click.h"
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

/// Starts the update of an installed component: closes the main client and
/// requests the package, which is installed when it has arrived. Only the manifest of the first
/// update source is searched. A component that it does not list under the row's name is not
/// downloaded, and its button stays off.
class UpdateFlows {
 public:
  explicit UpdateFlows(const UpdateParts& parts) : parts_(parts) {}

  /// Logs its failure as `UpdateInstalledAddon`, `UpdateInstalledTransport` or
  /// `UpdateInstalledChannel`.
  void UpdateInstalled(const view::Click& click);

 private:
  struct Offer;

  bool MayUpdate(const view::Click& click);
  std::optional<Offer> FindOffer(base::ComponentKind kind);
  std::optional<Offer> GetChannelInfo();
  std::optional<Offer> ReadOffer(base::ComponentKind kind);
  bool RequestPackage(const view::Click& click, const Offer& offer);

  UpdateParts parts_;
};

}  // namespace kitbay::install
