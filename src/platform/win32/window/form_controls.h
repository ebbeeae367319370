#pragma once

#include <windows.h>

#include "platform/main_window.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/window/help_label.h"
#include "platform/win32/window/status_controls.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

/// The numbers under which the controls report to the main window.
inline constexpr int kDirectoriesId = 101;
inline constexpr int kCloseId = 102;
inline constexpr int kHelpId = 103;
inline constexpr int kStatusBarId = 104;
inline constexpr int kProgressBarId = 105;

/// The main window's native controls. They are destroyed with their window.
class FormControls {
 public:
  /// Throws `base::Failure` with the HRESULT if a control cannot be created.
  FormControls(HWND form, MainWindowEvents& events);

  HWND directories() const { return directories_; }
  HWND close() const { return close_; }
  HelpLabel& help() { return help_; }
  CommonStatusBar& status_bar() { return status_bar_; }
  CommonProgressBar& progress_bar() { return progress_bar_; }

  void SetResolution(int dpi);

  /// Moves the controls to their places and returns the browser's place.
  Rectangle LayOut();

  /// The button whose caption underlines `letter`; null if there is none.
  HWND ButtonOfMnemonic(wchar_t letter) const;

 private:
  HWND form_;
  int dpi_ = kLogicalDpi;
  UniqueFont font_;
  HWND directories_;
  HWND close_;
  HelpLabel help_;
  CommonStatusBar status_bar_;
  CommonProgressBar progress_bar_;
};

}  // namespace kitbay::platform::win32
