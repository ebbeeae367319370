#pragma once

#include "platform/main_window.h"
#include "platform/win32/window/screen.h"

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

/// The dialog's initial and smallest size, frame included.
Extent InitialPreferenceExtent(int dpi);
Extent SmallestPreferenceExtent(int dpi);

/// Where the controls lie in the dialog's client area. None has a negative width or height.
struct PreferenceLayout {
  Rectangle label;
  Rectangle url_box;
  Rectangle add;
  Rectangle list;
  Rectangle remove;
  Rectangle close;
};

/// The buttons form a column at the right, the label and the text box lie above the list at the
/// left, and the list takes the remaining space. `text_height` is the height of a line of text.
PreferenceLayout LayOutPreferences(Extent client, int status_bar_height, int text_height, int dpi);

}  // namespace kitbay::platform::win32
