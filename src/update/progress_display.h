#pragma once

#include "base/error_log.h"
#include "platform/main_window.h"

namespace kitbay::update {

/// Puts the progress bar into the status bar, or takes it out again. A failure is logged.
void ShowProgressInStatusBar(base::ErrorLog& log, platform::MainWindow& window, bool show);

}  // namespace kitbay::update
