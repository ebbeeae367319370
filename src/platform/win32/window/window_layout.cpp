#include "platform/win32/window/window_layout.h"

#include <algorithm>

namespace kitbay::platform::win32 {
namespace {

constexpr Extent kInitialExtent{760, 520};
constexpr Extent kSmallestExtent{520, 360};
constexpr int kProgressPanelWidth = 160;

constexpr Extent kInitialDialogExtent{560, 300};
constexpr Extent kSmallestDialogExtent{460, 240};
constexpr int kLabelGap = 4;

// The text box's frame above and below its line of text.
constexpr int kBoxFrame = 8;

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

Extent InitialPreferenceExtent(int dpi) { return ScaleToDpi(kInitialDialogExtent, dpi); }

Extent SmallestPreferenceExtent(int dpi) { return ScaleToDpi(kSmallestDialogExtent, dpi); }

PreferenceLayout LayOutPreferences(Extent client, int status_bar_height, int text_height, int dpi) {
  const Extent button = ScaleToDpi(kButtonExtent, dpi);
  const int margin = ScaleToDpi(kMargin, dpi);
  const int gap = ScaleToDpi(kGap, dpi);
  const int button_left = std::max(client.width - margin - button.width, margin);
  const int button_right = button_left + button.width;
  const int left_right = std::max(button_left - gap, margin);

  const int label_bottom = margin + text_height;
  const int row_top = label_bottom + ScaleToDpi(kLabelGap, dpi);
  const int row_bottom = row_top + button.height;
  const int box_height = std::min(text_height + ScaleToDpi(kBoxFrame, dpi), button.height);
  const int box_top = row_top + (button.height - box_height) / 2;
  const int list_top = row_bottom + gap;
  const int remove_bottom = list_top + button.height;
  // The Close button never overlaps the other one.
  const int list_bottom =
      std::max(client.height - status_bar_height - margin, remove_bottom + gap + button.height);

  PreferenceLayout layout;
  layout.label = {margin, margin, left_right, label_bottom};
  layout.url_box = {margin, box_top, left_right, box_top + box_height};
  layout.add = {button_left, row_top, button_right, row_bottom};
  layout.list = {margin, list_top, left_right, list_bottom};
  layout.remove = {button_left, list_top, button_right, remove_bottom};
  layout.close = {button_left, list_bottom - button.height, button_right, list_bottom};
  return layout;
}

}  // namespace kitbay::platform::win32
