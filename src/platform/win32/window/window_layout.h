#pragma once

#include "platform/main_window.h"
#include "platform/win32/window/screen_scale.h"

namespace kitbay::platform::win32 {

/// The layout of the program's windows, in logical pixels: the free edge, the space between two
/// controls, and the size of a button.
inline constexpr int kMargin = 10;
inline constexpr int kGap = 8;
inline constexpr Extent kButtonExtent{96, 26};

/// The window's initial and smallest size, frame included.
Extent InitialWindowExtent(int dpi);
Extent SmallestWindowExtent(int dpi);

/// The width of the status bar's first panel, which the progress bar covers.
int ProgressPanelWidth(int dpi);

/// Where the controls lie in the window's client area. None has a negative width or height.
struct WindowLayout {
  Rectangle browser;
  Rectangle help;
  Rectangle directories;
  Rectangle close;
};

/// The browser takes the space that the strip of buttons and the status bar at the bottom leave.
/// `help_text` is the size of the help label's text.
WindowLayout LayOutWindow(Extent client, int status_bar_height, Extent help_text, int dpi);

}  // namespace kitbay::platform::win32
