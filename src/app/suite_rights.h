#pragma once

#include <string>

#include "base/settings.h"
#include "platform/desktop.h"
#include "platform/elevation.h"
#include "platform/files.h"
#include "platform/instance_mark.h"
#include "platform/main_window.h"

namespace kitbay::app {

/// What the rights of the user are found out and told with.
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

  /// Fills the settings. Where the user may not write into the suite's folders, has the system ask
  /// once for the rights. The main window is unloaded when the program starts again with them;
  /// otherwise the program goes on and changes nothing.
  void Check();

  /// Tells the user, the first time it is called, that nothing can be changed, and why; says
  /// nothing where all can.
  void TellOnce();

  /// Whether the suite may be changed. Tells the user where it may not.
  bool DemandChange();

 private:
  bool MayWriteEverywhere();
  void AskForRights();

  SuiteRightsParts parts_;
  bool is_told_ = false;
};

}  // namespace kitbay::app
