#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <string>

#include "contract/page/windows/loaded_window.h"
#include "contract/windows/key_held.h"

namespace kitbay::contract {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

constexpr const char* kTwoButtons =
    "<html><body><input type='button' id='first' value='1'><input type='button' id='last' "
    "value='2'></body></html>";

class MainWindowKeys : public ::testing::Test {
 protected:
  void SetUp() override {
    loaded_.window().Show();
    loaded_.told.clear();
  }

  HWND directories() const { return loaded_.Control(WC_BUTTONW, L"&Directories"); }
  HWND close() const { return loaded_.Control(WC_BUTTONW, L"&Close"); }
  bool PageHasFocus() const { return GetFocus() != nullptr && GetFocus() == loaded_.Browser(); }

  LoadedWindow& loaded_ = SharedWindow();
};

TEST_F(MainWindowKeys, EveryKeyIsReportedBeforeTheControlSeesIt) {
  SetFocus(directories());
  ASSERT_EQ(GetFocus(), directories());
  loaded_.PressKey(VK_ESCAPE);
  loaded_.PressKey(VK_SPACE);  // presses the button
  EXPECT_THAT(loaded_.told,
              ElementsAre("Form_KeyDown 27", "Form_KeyDown 32", "cmdPreference_Click"));
}

TEST_F(MainWindowKeys, AKeyInThePageIsReportedToo) {
  ASSERT_TRUE(loaded_.ShowMarkup(kTwoButtons));
  SetFocus(loaded_.Browser());
  ASSERT_TRUE(PageHasFocus());
  loaded_.told.clear();
  loaded_.PressKey(VK_ESCAPE);
  EXPECT_THAT(loaded_.told, ElementsAre("Form_KeyDown 27"));
}

TEST_F(MainWindowKeys, AKeyMayUnloadTheWindow) {
  LoadedWindow loaded;
  loaded.window().Show();
  SetFocus(loaded.Control(WC_BUTTONW, L"&Close"));
  loaded.on_told = [&](const std::string& what) {
    if (what == "Form_KeyDown 27") {
      loaded.window().Unload();
    }
  };
  loaded.PressKey(VK_ESCAPE);
  EXPECT_THAT(loaded.told, ElementsAre("Form_KeyDown 27", "Form_Unload"));
  EXPECT_EQ(loaded.handle(), nullptr);
}

TEST_F(MainWindowKeys, AKeyInThePageMayUnloadTheWindow) {
  LoadedWindow loaded;
  loaded.window().Show();
  ASSERT_TRUE(loaded.ShowMarkup(kTwoButtons));
  SetFocus(loaded.Browser());
  loaded.told.clear();
  loaded.on_told = [&](const std::string& what) {
    if (what == "Form_KeyDown 27") {
      loaded.window().Unload();
    }
  };
  loaded.PressKey(VK_ESCAPE);
  EXPECT_THAT(loaded.told, ElementsAre("Form_KeyDown 27", "Form_Unload"));
}

TEST_F(MainWindowKeys, F1OpensTheHelpOnceThereIsATopic) {
  LoadedWindow loaded;
  loaded.window().Show();
  SetFocus(loaded.Control(WC_BUTTONW, L"&Close"));
  loaded.PressKey(VK_F1);
  EXPECT_THAT(loaded.told, ElementsAre("Form_KeyDown 112"));
  loaded.window().SetHelpFile("C:\\help\\tesselhelp.chm::/AddRemovefeatures.html");
  loaded.PressKey(VK_F1);
  EXPECT_THAT(loaded.told, ElementsAre("Form_KeyDown 112", "Form_KeyDown 112", "lblHelp_Click"));
}

TEST_F(MainWindowKeys, TheUnderlinedLettersPressTheirButtons) {
  for (const HWND focus : {close(), loaded_.Browser()}) {
    SetFocus(focus);
    loaded_.told.clear();
    PostMessageW(GetFocus(), WM_SYSCHAR, 'd', 1 << 29);
    PostMessageW(GetFocus(), WM_SYSCHAR, 'C', 1 << 29);
    loaded_.RunWaiting();
    EXPECT_THAT(loaded_.told, ElementsAre("cmdPreference_Click", "CmdClose_Click"));
  }
}

TEST_F(MainWindowKeys, EnterPressesTheButtonThatHasTheFocus) {
  SetFocus(close());
  loaded_.PressKey(VK_RETURN);
  EXPECT_THAT(loaded_.told, ElementsAre("Form_KeyDown 13", "CmdClose_Click"));
}

TEST_F(MainWindowKeys, TabGoesThroughThePageAndTheButtonsAndStartsAgain) {
  ASSERT_TRUE(loaded_.ShowMarkup(kTwoButtons));
  SetFocus(directories());
  loaded_.PressKey(VK_TAB);
  EXPECT_EQ(GetFocus(), close());
  loaded_.PressKey(VK_TAB);
  EXPECT_TRUE(PageHasFocus());
  // However many stops there are within the page, they end at the first button.
  int steps = 0;
  while (PageHasFocus() && steps < 10) {
    loaded_.PressKey(VK_TAB);
    ++steps;
  }
  EXPECT_EQ(GetFocus(), directories());
  EXPECT_GT(steps, 1);
}

TEST_F(MainWindowKeys, ShiftTabGoesTheOtherWay) {
  ASSERT_TRUE(loaded_.ShowMarkup(kTwoButtons));
  SetFocus(close());
  const KeyHeld shift(VK_SHIFT);
  loaded_.PressKey(VK_TAB);
  EXPECT_EQ(GetFocus(), directories());
  loaded_.PressKey(VK_TAB);
  EXPECT_TRUE(PageHasFocus());
  int steps = 0;
  while (PageHasFocus() && steps < 10) {
    loaded_.PressKey(VK_TAB);
    ++steps;
  }
  EXPECT_EQ(GetFocus(), close());
}

TEST_F(MainWindowKeys, APageThatDoesNotReloadKeepsItsNodes) {
  ASSERT_TRUE(loaded_.ShowMarkup(kTwoButtons));
  SetFocus(loaded_.Browser());
  loaded_.told.clear();
  loaded_.PressKey(VK_F5);
  loaded_.PressKey(VK_BACK);
  loaded_.PressKey(VK_TAB);
  EXPECT_THAT(loaded_.told, Contains("Form_KeyDown 116"));
  EXPECT_THAT(loaded_.told, Not(Contains("WebBrowser1_DocumentComplete")));
}

}  // namespace
}  // namespace kitbay::contract
