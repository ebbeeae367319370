#include "platform/win32/window/window_layout.h"

#include <algorithm>

namespace kitbay::platform::win32 {
namespace {

constexpr Extent kInitialExtent{760, 520};
constexpr Extent kSmallestExtent{520, 360};
constexpr int kProgressPanelWidth = 160;

}  // namespace

Extent InitialWindowExtent(int dpi) { return ScaleToDpi(kInitialExtent, dpi); }

Extent SmallestWindowExtent(int dpi) { return ScaleToDpi(kSmallestExtent, dpi); }

int ProgressPanelWidth(int dpi) { return ScaleToDpi(kProgressPanelWidth, dpi); }

WindowLayout LayOutWindow(Extent client, int status_bar_height, Extent help_text, int dpi) {
  const Extent button = ScaleToDpi(kButtonExtent, dpi);
  const int margin = ScaleToDpi(kMargin, dpi);
  const int width = std::max(client.width, 0);
  const int strip_bottom = std::max(client.height - status_bar_height, 0);
  const int strip_top = std::max(strip_bottom - button.height - 2 * margin, 0);
  const int row_middle = (strip_top + strip_bottom) / 2;

  WindowLayout layout;
  layout.browser = {0, 0, width, strip_top};
  const int button_top = row_middle - button.height / 2;
  const int close_left = width - margin - button.width;
  const int directories_left = close_left - ScaleToDpi(kGap, dpi) - button.width;
  layout.close = {close_left, button_top, close_left + button.width, button_top + button.height};
  layout.directories = {directories_left, button_top, directories_left + button.width,
                        button_top + button.height};
  const int help_top = row_middle - help_text.height / 2;
  layout.help = {margin, help_top, margin + help_text.width, help_top + help_text.height};
  return layout;
}

}  // namespace kitbay::platform::win32
