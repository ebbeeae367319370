#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "platform/main_window.h"
#include "view/page_document.h"
#include "view/view_state.h"

namespace kitbay::view {

/// Switches the page's buttons off while a download or an installation runs, and on again. Every
/// procedure logs its failure; a container without rows is passed over.
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

  /// Switches off what a list that was filled anew has switched on during a download or an
  /// installation; does nothing at other times.
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
