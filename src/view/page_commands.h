#pragma once

#include <string>

namespace kitbay::view {

/// What the buttons of the page's rows start.
class PageCommands {
 public:
  virtual ~PageCommands() = default;

  /// Each updates the component whose row was clicked.
  virtual void UpdateInstalledAddon() = 0;
  virtual void UpdateInstalledTransport() = 0;
  virtual void UpdateInstalledChannel() = 0;

  /// Removes the component whose row was clicked. `action` is "Uninstall", "UninstallTransport" or
  /// "UninstallChannel"; `kind` is the kind's name in the user's messages.
  virtual void RemoveAddon(const std::string& action, const std::string& kind) = 0;

  /// Installs the new component with that name, listed in `container`. Returns whether an
  /// installation is under way now.
  virtual bool InstallNewAddons(const std::string& container, const std::string& name) = 0;
};

}  // namespace kitbay::view
