#pragma once

#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

/// The dialog's first and its smallest size, frame included.
Extent InitialPreferenceExtent(int dpi);
Extent SmallestPreferenceExtent(int dpi);

/// Where the dialog's controls lie in its client area. None of them has a negative width or height.
struct PreferenceLayout {
  Rectangle label;
  Rectangle url_box;
  Rectangle add;
  Rectangle list;
  Rectangle remove;
  Rectangle close;
};

/// The buttons stand in a column at the right, the label and the text box above the list at the
/// left; the list takes what is left. `text_height` is the height of a line of text.
PreferenceLayout LayOutPreferences(Extent client, int status_bar_height, int text_height, int dpi);

}  // namespace kitbay::platform::win32
