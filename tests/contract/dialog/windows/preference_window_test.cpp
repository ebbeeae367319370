// What only the real dialog has: its appearance, its place, the mouse and the system's messages.
#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include "contract/dialog/windows/real_preference_window.h"
#include "contract/windows/key_held.h"

namespace kitbay::contract {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED, which older headers lack

class RealPreferenceWindow : public testing::Test {
 protected:
  RealPreferenceWindow() { Open(); }

  void Open() {
    world_.window().Load(events_, world_.owner());
    for (const char* item : {"one", "two", "three"}) {
      world_.window().AddItem(item);
    }
    world_.window().Show();
    events_.told.clear();
  }

  RECT PlaceInDialog(const std::string& control) const {
    RECT place{};
    GetWindowRect(world_.Control(control), &place);
    MapWindowPoints(nullptr, world_.dialog(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

  int ColumnWidth() const {
    return static_cast<int>(SendMessageW(world_.Control("lstPrefURL"), LVM_GETCOLUMNWIDTH, 0, 0));
  }
  int ListWidth() const {
    RECT client{};
    GetClientRect(world_.Control("lstPrefURL"), &client);
    return static_cast<int>(client.right);
  }

  Win32PreferenceWindowWorld world_;
  RecordingPreferenceEvents events_;
};

TEST_F(RealPreferenceWindow, IsOwnedAndNotModal) {
  ASSERT_NE(world_.dialog(), nullptr);
  EXPECT_EQ(GetWindow(world_.dialog(), GW_OWNER), world_.owner_window());
  EXPECT_TRUE(IsWindowEnabled(world_.owner_window()));
}

TEST_F(RealPreferenceWindow, HasItsControlsUnderTheirCaptionsInVerdana) {
  for (const auto& [name, caption] : std::vector<std::pair<std::string, std::string>>{
           {"lblPrefText", "Add a new Tessel Directory "},
           {"txtPrefUrl", ""},
           {"cmdPrefOk", "&Add"},
           {"Command1", "&Remove"},
           {"cmdPrefClose", "&Close"},
           {"lstPrefURL", ""},
           {"frmPrefStatus", ""}}) {
    const HWND control = world_.Control(name);
    ASSERT_NE(control, nullptr) << name;
    EXPECT_EQ(Win32PreferenceWindowWorld::TextOf(control), caption) << name;
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof(font),
               &font);
    EXPECT_STREQ(font.lfFaceName, L"Verdana") << name;
  }
}

TEST_F(RealPreferenceWindow, OpensOverTheMiddleOfItsOwner) {
  RECT owner{};
  GetWindowRect(world_.owner_window(), &owner);
  RECT place{};
  GetWindowRect(world_.dialog(), &place);
  EXPECT_NEAR(place.left + place.right, owner.left + owner.right, 2);
  EXPECT_NEAR(place.top + place.bottom, owner.top + owner.bottom, 2);
}

TEST_F(RealPreferenceWindow, StaysOnTheScreenWhenItsOwnerIsAtTheEdge) {
  world_.window().Unload();
  SetWindowPos(world_.owner_window(), nullptr, -600, -400, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  Open();
  RECT place{};
  GetWindowRect(world_.dialog(), &place);
  EXPECT_EQ(place.left, 0);
  EXPECT_EQ(place.top, 0);
}

TEST_F(RealPreferenceWindow, ComesToTheFrontWhenShownAgain) {
  SetForegroundWindow(world_.owner_window());
  SetFocus(world_.owner_window());
  world_.window().Show();
  EXPECT_EQ(GetActiveWindow(), world_.dialog());
  EXPECT_EQ(FindWindowExW(nullptr, world_.dialog(), L"KitbayPreferenceWindow", nullptr), nullptr);
}

TEST_F(RealPreferenceWindow, ButtonsReportTheirClicks) {
  world_.window().EnableRemoveButton(true);
  for (const char* button : {"cmdPrefOk", "Command1", "cmdPrefClose"}) {
    RECT client{};
    GetClientRect(world_.Control(button), &client);
    const LPARAM middle = MAKELPARAM(client.right / 2, client.bottom / 2);
    PostMessageW(world_.Control(button), WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(world_.Control(button), WM_LBUTTONUP, 0, middle);
    world_.RunWaiting();
  }
  EXPECT_THAT(events_.told, ElementsAre("cmdPrefOk_Click", "Command1_Click", "cmdPrefClose_Click"));
}

TEST_F(RealPreferenceWindow, AClickBelowTheItemsSelectsNone) {
  world_.Click(2);
  POINT below = world_.PlaceOfItem(3);
  below.y += 60;
  events_.told.clear();
  world_.ClickAt(below);
  EXPECT_EQ(world_.window().SelectedItem(), 0);
  EXPECT_THAT(events_.told, Contains("lstPrefURL_MouseUp"));
}

TEST_F(RealPreferenceWindow, OnlyOneItemIsSelectedAtATime) {
  world_.Click(2);
  {
    const KeyHeld control(VK_CONTROL);
    world_.Click(3);
  }
  EXPECT_EQ(SendMessageW(world_.Control("lstPrefURL"), LVM_GETSELECTEDCOUNT, 0, 0), 1);
  EXPECT_EQ(world_.window().SelectedItem(), 3);
}

TEST_F(RealPreferenceWindow, TheColumnFillsTheListAlsoWhenItIsResized) {
  EXPECT_EQ(ColumnWidth(), ListWidth());
  const int before = ListWidth();
  SetWindowPos(world_.dialog(), nullptr, 0, 0, 800, 400, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_GT(ListWidth(), before);
  EXPECT_EQ(ColumnWidth(), ListWidth());
}

TEST_F(RealPreferenceWindow, TheColumnGrowsWithALongUrlAndShrinksWhenItGoes) {
  world_.window().AddItem("host.example.com/" + std::string(300, 'w') + ".xml");
  EXPECT_GT(ColumnWidth(), 2 * ListWidth());
  world_.window().RemoveItem(4);
  EXPECT_EQ(ColumnWidth(), ListWidth());
}

TEST_F(RealPreferenceWindow, RowsAreHigherThanTheirLineOfText) {
  EXPECT_GE(world_.PlaceOfItem(2).y - world_.PlaceOfItem(1).y, 18);
}

TEST_F(RealPreferenceWindow, AnAddedItemIsSeen) {
  for (int i = 0; i < 50; ++i) {
    world_.window().AddItem("more");
  }
  const HWND list = world_.Control("lstPrefURL");
  const auto first = SendMessageW(list, LVM_GETTOPINDEX, 0, 0);
  const auto rows = SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0);
  EXPECT_GE(first + rows, 53);
}

TEST_F(RealPreferenceWindow, CannotBeMadeSmallerThanItsControlsNeed) {
  SetWindowPos(world_.dialog(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
  RECT place{};
  GetWindowRect(world_.dialog(), &place);
  EXPECT_EQ(place.right - place.left, 460);
  EXPECT_EQ(place.bottom - place.top, 240);
  EXPECT_LT(PlaceInDialog("Command1").bottom, PlaceInDialog("cmdPrefClose").top);
  EXPECT_LE(PlaceInDialog("cmdPrefClose").bottom, PlaceInDialog("frmPrefStatus").top);
}

TEST_F(RealPreferenceWindow, LeavesItsControlsAsTheyAreWhileItIsMinimised) {
  const RECT shown = PlaceInDialog("txtPrefUrl");
  ShowWindow(world_.dialog(), SW_MINIMIZE);
  ASSERT_TRUE(IsIconic(world_.dialog()));
  const RECT minimised = PlaceInDialog("txtPrefUrl");
  EXPECT_EQ(minimised.right - minimised.left, shown.right - shown.left);
  EXPECT_GT(shown.right - shown.left, 0);
}

TEST_F(RealPreferenceWindow, FollowsANewResolution) {
  const RECT before = PlaceInDialog("cmdPrefOk");
  RECT suggested{100, 100, 1000, 610};
  SendMessageW(world_.dialog(), kDpiChanged, MAKEWPARAM(144, 144),
               reinterpret_cast<LPARAM>(&suggested));
  const RECT after = PlaceInDialog("cmdPrefOk");
  EXPECT_EQ(after.right - after.left, (before.right - before.left) * 3 / 2);
  EXPECT_EQ(after.bottom - after.top, (before.bottom - before.top) * 3 / 2);
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(world_.Control("lstPrefURL"), WM_GETFONT, 0, 0)),
             sizeof(font), &font);
  EXPECT_EQ(font.lfHeight, -16);
  EXPECT_GE(world_.PlaceOfItem(2).y - world_.PlaceOfItem(1).y, 26);
  RECT place{};
  GetWindowRect(world_.dialog(), &place);
  EXPECT_EQ(place.right, 1000);
  EXPECT_EQ(ColumnWidth(), ListWidth());
}

TEST_F(RealPreferenceWindow, TheSystemsCloseUnloads) {
  SendMessageW(world_.dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
  EXPECT_FALSE(world_.window().IsLoaded());
}

TEST_F(RealPreferenceWindow, TheEndOfTheSessionUnloads) {
  EXPECT_NE(SendMessageW(world_.dialog(), WM_QUERYENDSESSION, 0, 0), 0);
  SendMessageW(world_.dialog(), WM_ENDSESSION, FALSE, 0);
  EXPECT_TRUE(world_.window().IsLoaded());
  SendMessageW(world_.dialog(), WM_ENDSESSION, TRUE, 0);
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
  EXPECT_FALSE(world_.window().IsLoaded());
}

TEST_F(RealPreferenceWindow, ClosedByItsOwnButtonGivesTheOwnerTheFocusBack) {
  events_.on_told = [&](const std::string& what) {
    if (what == "cmdPrefClose_Click") {
      world_.window().Unload();
    }
  };
  SendMessageW(world_.Control("cmdPrefClose"), BM_CLICK, 0, 0);
  EXPECT_THAT(events_.told, ElementsAre("cmdPrefClose_Click", "Form_Unload"));
  EXPECT_EQ(GetActiveWindow(), world_.owner_window());
}

TEST_F(RealPreferenceWindow, AHandlerThatThrowsHarmsNothing) {
  events_.on_told = [](const std::string&) { throw std::runtime_error("handler"); };
  SendMessageW(world_.Control("cmdPrefOk"), BM_CLICK, 0, 0);
  world_.PressKey(VK_RETURN);
  world_.window().Unload();
  EXPECT_FALSE(world_.window().IsLoaded());
}

TEST_F(RealPreferenceWindow, EndedWithItsObjectReportsNothing) {
  auto loop = platform::win32::MakeMessageLoop();
  auto another = platform::win32::MakePreferenceWindow(*loop);
  RecordingPreferenceEvents others;
  world_.window().Unload();
  another->Load(others, world_.owner());
  another.reset();
  EXPECT_THAT(others.told, IsEmpty());
  EXPECT_EQ(world_.dialog(), nullptr);
}

}  // namespace
}  // namespace kitbay::contract
