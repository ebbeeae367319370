#include "platform/win32/window/window_layout.h"

#include <gtest/gtest.h>

namespace kitbay::platform::win32 {
namespace {

constexpr Extent kHelpText{28, 13};

int Width(const Rectangle& place) { return place.right - place.left; }
int Height(const Rectangle& place) { return place.bottom - place.top; }

TEST(WindowLayout, ScalesToTheNearestPixel) {
  EXPECT_EQ(ScaleToDpi(10, 96), 10);
  EXPECT_EQ(ScaleToDpi(10, 144), 15);
  EXPECT_EQ(ScaleToDpi(5, 120), 6);  // 6.25
  EXPECT_EQ(ScaleToDpi(7, 120), 9);  // 8.75
}

TEST(WindowLayout, TheBrowserFillsWhatTheStripAndTheStatusBarLeave) {
  const WindowLayout layout = LayOutWindow({744, 481}, 22, kHelpText, 96);
  EXPECT_EQ(layout.browser, (Rectangle{0, 0, 744, 481 - 22 - 46}));
}

TEST(WindowLayout, TheButtonsStandAtTheRightAndTheLabelAtTheLeftOfTheStrip) {
  const WindowLayout layout = LayOutWindow({744, 481}, 22, kHelpText, 96);
  EXPECT_EQ(layout.close, (Rectangle{638, 423, 734, 449}));
  EXPECT_EQ(layout.directories, (Rectangle{534, 423, 630, 449}));
  EXPECT_EQ(layout.help, (Rectangle{10, 430, 38, 443}));
}

TEST(WindowLayout, EverythingGrowsWithTheResolution) {
  const WindowLayout layout = LayOutWindow({1488, 962}, 44, {56, 26}, 192);
  EXPECT_EQ(layout.browser, (Rectangle{0, 0, 1488, 962 - 44 - 92}));
  EXPECT_EQ(Width(layout.close), 192);
  EXPECT_EQ(Height(layout.close), 52);
}

TEST(WindowLayout, NoControlOverlapsAnotherInTheSmallestWindow) {
  const Extent smallest = SmallestWindowExtent(96);
  const WindowLayout layout =
      LayOutWindow({smallest.width - 16, smallest.height - 39}, 22, kHelpText, 96);
  EXPECT_LT(layout.help.right, layout.directories.left);
  EXPECT_LT(layout.directories.right, layout.close.left);
  EXPECT_LE(layout.browser.bottom, layout.close.top);
  EXPECT_GT(Height(layout.browser), 200);
}

TEST(WindowLayout, AWindowWithoutRoomGivesTheBrowserNoNegativeSize) {
  for (const Extent client : {Extent{0, 0}, Extent{10, 30}, Extent{-1, -1}}) {
    const WindowLayout layout = LayOutWindow(client, 22, kHelpText, 96);
    EXPECT_GE(Width(layout.browser), 0);
    EXPECT_GE(Height(layout.browser), 0);
  }
}

}  // namespace
}  // namespace kitbay::platform::win32
