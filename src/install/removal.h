#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "platform/desktop.h"
#include "platform/files.h"
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

/// Removes the component whose button is being clicked: its row from the page and its entry from
/// the registry files. Its files stay, and its libraries stay registered.
class Removal {
 public:
  explicit Removal(const RemovalParts& parts) : parts_(parts) {}

  /// `action` is "Uninstall", "UninstallTransport" or "UninstallChannel", in any case; `kind` is
  /// the kind's name in the user's messages.
  void RemoveAddon(const std::string& action, const std::string& kind);

  /// Asks the user and removes the current component. `result` says whether it was to be removed.
  void checkExe(const std::string& action, const std::string& name, const std::string& kind,
                bool& result);

 private:
  void Delnode(const std::string& action);
  void DelnodeWithoutTessel(const std::string& action);
  void TakeRowAway(const std::string& action);
  void UninstallFromBoth(const std::string& action);
  void uninstall(const std::string& path, base::ComponentKind kind, bool& is_missing);

  RemovalParts parts_;
};

}  // namespace kitbay::install
