#pragma once

#include "view/click.h"

namespace kitbay::view {

/// What the buttons of the page's rows start.
class PageCommands {
 public:
  virtual ~PageCommands() = default;

  virtual void UpdateInstalled(const Click& click) = 0;
  virtual void RemoveAddon(const Click& click) = 0;

  /// Returns whether an installation is under way now.
  virtual bool InstallNewAddons(const Click& click) = 0;
};

}  // namespace kitbay::view
