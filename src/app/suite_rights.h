#pragma once

#include <string>

#include "base/settings.h"
#include "platform/desktop.h"
#include "platform/elevation.h"
#include "platform/files.h"
#include "platform/instance_mark.h"
#include "platform/main_window.h"

namespace kitbay::app {

/// What it takes to determine the user's rights and report them.
struct SuiteRightsParts {
  base::Settings& settings;
  platform::Files& files;
  platform::Desktop& desktop;
  platform::Elevation& elevation;
  platform::InstanceMark& instance_mark;
  platform::MainWindow& window;
};

/// Whether this user may change the suite, whose folder often belongs to an administrator.
class SuiteRights {
 public:
  explicit SuiteRights(const SuiteRightsParts& parts) : parts_(parts) {}

  /// Fills the settings. If the user may not write to the suite's folders, has the system ask once
  /// for the rights. The main window is unloaded when the program starts again with them; otherwise
  /// the program goes on and changes nothing.
  void Check();

  /// On its first call, tells the user that nothing can be changed, and why. Says nothing if
  /// everything can be changed.
  void TellOnce();

  /// Whether the suite may be changed. If not, tells the user.
  bool DemandChange();

 private:
  bool MayWriteEverywhere();
  void AskForRights();

  SuiteRightsParts parts_;
  bool is_told_ = false;
};

}  // namespace kitbay::app
