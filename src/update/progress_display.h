#pragma once

#include "base/error_log.h"
#include "platform/main_window.h"

namespace kitbay::update {

/// The panel of the status bar that the progress bar lies on.
inline constexpr int kProgressPanel = 1;

/// Puts the progress bar into the status bar, or takes it out again. A failure is logged.
void ShowProgressInStatusBar(base::ErrorLog& log, platform::MainWindow& window, bool show);

}  // namespace kitbay::update
