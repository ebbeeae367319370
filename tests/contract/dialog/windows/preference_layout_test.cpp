#include "platform/win32/window/window_layout.h"

#include <gtest/gtest.h>

namespace kitbay::platform::win32 {
namespace {

constexpr int kStatusBar = 22;
constexpr int kText = 13;

int Width(const Rectangle& place) { return place.right - place.left; }
int Height(const Rectangle& place) { return place.bottom - place.top; }

TEST(PreferenceLayout, BoxAndListStandAtTheLeftAndTheButtonsInAColumnAtTheRight) {
  const PreferenceLayout layout = LayOutPreferences({584, 301}, kStatusBar, kText, 96);
  EXPECT_EQ(layout.label, (Rectangle{10, 10, 470, 23}));
  EXPECT_EQ(layout.url_box, (Rectangle{10, 29, 470, 50}));
  EXPECT_EQ(layout.add, (Rectangle{478, 27, 574, 53}));
  EXPECT_EQ(layout.list, (Rectangle{10, 61, 470, 269}));
  EXPECT_EQ(layout.remove, (Rectangle{478, 61, 574, 87}));
  EXPECT_EQ(layout.close, (Rectangle{478, 243, 574, 269}));
}

TEST(PreferenceLayout, EverythingGrowsWithTheResolution) {
  const PreferenceLayout layout = LayOutPreferences({1168, 602}, 44, 26, 192);
  EXPECT_EQ(layout.label, (Rectangle{20, 20, 940, 46}));
  EXPECT_EQ(layout.url_box, (Rectangle{20, 59, 940, 101}));
  EXPECT_EQ(layout.add, (Rectangle{956, 54, 1148, 106}));
  EXPECT_EQ(layout.list, (Rectangle{20, 122, 940, 538}));
}

TEST(PreferenceLayout, NoControlOverlapsAnotherInTheSmallestWindow) {
  const Extent smallest = SmallestPreferenceExtent(96);
  const PreferenceLayout layout =
      LayOutPreferences({smallest.width - 16, smallest.height - 39}, kStatusBar, kText, 96);
  EXPECT_LT(layout.remove.bottom, layout.close.top);
  EXPECT_LE(layout.close.bottom, smallest.height - 39 - kStatusBar);
  EXPECT_LT(layout.list.right, layout.remove.left);
  EXPECT_GT(Height(layout.list), 80);
}

TEST(PreferenceLayout, AWindowWithoutRoomGivesNothingANegativeSize) {
  for (const Extent client : {Extent{0, 0}, Extent{10, 30}, Extent{-1, -1}}) {
    const PreferenceLayout layout = LayOutPreferences(client, kStatusBar, kText, 96);
    for (const Rectangle& place :
         {layout.label, layout.url_box, layout.add, layout.list, layout.remove, layout.close}) {
      EXPECT_GE(Width(place), 0);
      EXPECT_GE(Height(place), 0);
    }
  }
}

}  // namespace
}  // namespace kitbay::platform::win32
