#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "platform/main_window.h"
#include "view/page_document.h"
#include "view/view_state.h"

namespace kitbay::view {

/// Disables the page's buttons while a download or an installation runs, and enables them again.
/// Every procedure logs its failure; a container without rows is skipped.
class PageButtons {
 public:
  PageButtons(base::ErrorLog& log, const PageDocument& page, ViewState& state,
              platform::MainWindow& window)
      : log_(log), page_(page), state_(state), window_(window) {}

  /// The first button of every row of new components.
  void DisableOtherDownload();
  void EnableOtherDownload();

  /// The buttons of every row of installed components.
  void DisableOtherUpdatedDownload();
  void EnableOtherUpdatedDownload();

  /// Disables what a list that was filled again during a download or an installation has enabled;
  /// does nothing at other times.
  void DisableRelisted();

  /// Clears the status text and hides the progress bar.
  void DisableStatus();

 private:
  void SwitchNewComponents(bool off);
  void SwitchInstalled(bool off);

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
  platform::MainWindow& window_;
};

}  // namespace kitbay::view
