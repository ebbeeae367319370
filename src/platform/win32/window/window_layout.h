#pragma once

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// Sizes are given for a screen of 96 dots per inch and scaled to the window's own.
inline constexpr int kLogicalDpi = 96;

/// `logical` pixels of 96 dots per inch as pixels of `dpi` dots per inch, rounded to nearest.
int ScaleToDpi(int logical, int dpi);

/// Width and height in pixels.
struct Extent {
  int width = 0;
  int height = 0;
};

/// The window's first and its smallest size, frame included.
Extent InitialWindowExtent(int dpi);
Extent SmallestWindowExtent(int dpi);

/// The width of the status bar's first panel, which the progress bar covers.
int ProgressPanelWidth(int dpi);

/// Where the controls lie in the window's client area. None of them has a negative width or height.
struct WindowLayout {
  Rectangle browser;
  Rectangle help;
  Rectangle directories;
  Rectangle close;
};

/// The browser takes what the strip of buttons and the status bar at the bottom leave.
/// `help_text` is the size of the help label's text.
WindowLayout LayOutWindow(Extent client, int status_bar_height, Extent help_text, int dpi);

}  // namespace kitbay::platform::win32
