#pragma once

#include <windows.h>

#include <vector>

namespace kitbay::platform::win32 {

/// Takes mouse and keyboard from the visible windows of this thread, `owner` aside, as long as it
/// lives. A message box does so with its owner alone.
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
