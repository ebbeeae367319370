#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "view/click.h"
#include "view/page_document.h"
#include "view/page_rows.h"
#include "view/view_state.h"

namespace kitbay::install {

/// What a removal works with.
struct RemovalParts {
  base::ErrorLog& log;
  const base::Settings& settings;
  platform::Files& files;
  platform::Desktop& desktop;
  const view::PageDocument& page;
  view::ViewState& state;
  view::PageRows& rows;
  MainClient& main_client;
  InstallSession& session;
};

/// Removes an installed component: its row from the page and its entry from the registry files. Its
/// files stay, and its libraries stay registered.
class Removal {
 public:
  explicit Removal(const RemovalParts& parts) : parts_(parts) {}

  void RemoveAddon(const view::Click& click);

  /// Asks the user and removes the current component. Returns whether it was to be removed.
  bool checkExe(base::ComponentKind kind, const std::string& name);

 private:
  void Delnode(base::ComponentKind kind);
  void DelnodeWithoutTessel(base::ComponentKind kind);
  void TakeRowAway(base::ComponentKind kind);
  void UninstallFromBoth(base::ComponentKind kind);
  bool uninstall(const std::string& path, base::ComponentKind kind);

  RemovalParts parts_;
};

}  // namespace kitbay::install
