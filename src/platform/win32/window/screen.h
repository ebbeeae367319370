#pragma once

#include <windows.h>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// Sizes are given for a screen of 96 dots per inch and scaled to the window's own resolution.
inline constexpr int kLogicalDpi = 96;

/// Width and height in pixels.
struct Extent {
  int width = 0;
  int height = 0;
};

/// Converts `logical` pixels of 96 dots per inch to pixels of `dpi` dots per inch, rounded to
/// nearest.
int ScaleToDpi(int logical, int dpi);
Extent ScaleToDpi(Extent logical, int dpi);

/// WM_DPICHANGED, the message that a window's resolution changes; older headers lack it.
inline constexpr UINT kDpiChanged = 0x02E0;

/// The dots per inch at which the window is shown.
int DpiOfWindow(HWND window);

/// The program's font, 8-point Verdana, for that resolution.
UniqueFont MakeProgramFont(int dpi, bool underlined);

/// Keeps the window within the part of its screen that programs may use.
void KeepOnScreen(HWND window);

/// Centres the window over `other`, and keeps it on the screen.
void CentreOver(HWND window, HWND other);

/// Whether the user's windows have light text on a dark background.
bool AreColoursDark();

}  // namespace kitbay::platform::win32
