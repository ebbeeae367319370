#pragma once

#include <windows.h>

#include <vector>

namespace kitbay::platform::win32 {

/// Disables mouse and keyboard for the visible windows of this thread, except `owner`, as long as
/// it lives. A message box does that only for its owner.
class HeldWindows {
 public:
  explicit HeldWindows(HWND owner);
  ~HeldWindows();
  HeldWindows(const HeldWindows&) = delete;
  HeldWindows& operator=(const HeldWindows&) = delete;

 private:
  static BOOL CALLBACK Hold(HWND window, LPARAM self);

  HWND owner_;
  std::vector<HWND> held_;
};

}  // namespace kitbay::platform::win32
