#include "update/progress_display.h"

#include "base/guarded.h"

namespace kitbay::update {

void ShowProgressInStatusBar(base::ErrorLog& log, platform::MainWindow& window, bool show) {
  base::guarded(log, "Kitbay::ShowProgressInStatusBar", [&] {
    platform::ProgressBar& bar = window.progress_bar();
    if (show) {
      const platform::Rectangle panel =
          window.status_bar().PanelRectangle(platform::kProgressPanel);
      bar.SetParent(true);
      bar.Move(platform::ProgressBarPlace(panel));
      bar.SetVisible(true);
      bar.SetValue(0);
    } else {
      bar.SetParent(false);
      bar.SetVisible(false);
    }
  });
}

}  // namespace kitbay::update
