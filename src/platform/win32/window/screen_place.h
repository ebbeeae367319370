#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// Keeps the window within the part of its screen that programs may use.
void KeepOnScreen(HWND window);

/// Centres the window over `other`, and keeps it on the screen.
void CentreOver(HWND window, HWND other);

}  // namespace kitbay::platform::win32
