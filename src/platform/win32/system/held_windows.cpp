#include "platform/win32/system/held_windows.h"

#include <algorithm>

namespace kitbay::platform::win32 {

HeldWindows::HeldWindows(HWND owner) : owner_(owner) {
  EnumThreadWindows(GetCurrentThreadId(), &HeldWindows::Hold, reinterpret_cast<LPARAM>(this));
  std::for_each(held_.begin(), held_.end(), [](HWND window) { EnableWindow(window, FALSE); });
}

HeldWindows::~HeldWindows() {
  std::for_each(held_.begin(), held_.end(), [](HWND window) { EnableWindow(window, TRUE); });
}

BOOL CALLBACK HeldWindows::Hold(HWND window, LPARAM self) {
  try {
    auto* const held = reinterpret_cast<HeldWindows*>(self);
    if (window != held->owner_ && IsWindowVisible(window) && IsWindowEnabled(window)) {
      held->held_.push_back(window);
    }
    return TRUE;
  } catch (...) {
    // No exception may pass into the system; the windows found so far are held.
    return FALSE;
  }
}

}  // namespace kitbay::platform::win32
