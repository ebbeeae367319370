#pragma once

#include "base/error_log.h"
#include "platform/main_window.h"

namespace kitbay::update {

/// Moves the progress bar into the status bar, or out of it. A failure is logged.
void ShowProgressInStatusBar(base::ErrorLog& log, platform::MainWindow& window, bool show);

}  // namespace kitbay::update
