#pragma once

#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

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
