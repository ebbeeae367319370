#pragma once

#include <windows.h>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// The message that a window's resolution changes, WM_DPICHANGED, which older headers lack.
inline constexpr UINT kDpiChanged = 0x02E0;

/// The dots per inch at which the window is shown.
int DpiOfWindow(HWND window);

/// The program's font, Verdana of 8 points, for that resolution.
UniqueFont MakeProgramFont(int dpi, bool underlined);

}  // namespace kitbay::platform::win32
