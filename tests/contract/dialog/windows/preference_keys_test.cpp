// The dialog's keyboard, as messages that pass through the program's loop.
#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include "contract/dialog/windows/real_preference_window.h"
#include "contract/windows/key_held.h"

namespace kitbay::contract {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class PreferenceKeys : public testing::Test {
 protected:
  PreferenceKeys() {
    world_.window().Load(events_, world_.owner());
    for (const char* item : {"one", "two", "three"}) {
      world_.window().AddItem(item);
    }
    world_.window().EnableRemoveButton(true);
    world_.window().Show();
    world_.window().FocusUrlBox();
    events_.told.clear();
  }

  Win32PreferenceWindowWorld world_;
  RecordingPreferenceEvents events_;
};

TEST_F(PreferenceKeys, TabGoesThroughTheControlsAndStartsAgain) {
  for (const char* next : {"cmdPrefOk", "lstPrefURL", "Command1", "cmdPrefClose", "txtPrefUrl"}) {
    world_.PressKey(VK_TAB);
    EXPECT_EQ(world_.Focus(), next);
  }
}

TEST_F(PreferenceKeys, ShiftTabGoesTheOtherWay) {
  const KeyHeld shift(VK_SHIFT);
  for (const char* next : {"cmdPrefClose", "Command1", "lstPrefURL", "cmdPrefOk", "txtPrefUrl"}) {
    world_.PressKey(VK_TAB);
    EXPECT_EQ(world_.Focus(), next);
  }
}

TEST_F(PreferenceKeys, TabPassesTheDisabledButton) {
  world_.window().EnableRemoveButton(false);
  SetFocus(world_.Control("lstPrefURL"));
  world_.PressKey(VK_TAB);
  EXPECT_EQ(world_.Focus(), "cmdPrefClose");
}

TEST_F(PreferenceKeys, EnterInTheTextBoxIsReportedAndPressesNoButton) {
  world_.PressKey(VK_RETURN);
  EXPECT_THAT(events_.told, ElementsAre("txtPrefUrl_KeyDown 13"));
}

TEST_F(PreferenceKeys, OtherKeysInTheTextBoxAreReportedAndTyped) {
  world_.PressKey('A');
  EXPECT_THAT(events_.told, ElementsAre("txtPrefUrl_KeyDown 65"));
  EXPECT_EQ(world_.window().UrlText(), "a");
}

TEST_F(PreferenceKeys, EnterPressesTheButtonThatHasTheFocus) {
  SetFocus(world_.Control("cmdPrefClose"));
  world_.PressKey(VK_RETURN);
  SetFocus(world_.Control("Command1"));
  world_.PressKey(VK_RETURN);
  EXPECT_THAT(events_.told, ElementsAre("cmdPrefClose_Click", "Command1_Click"));
}

TEST_F(PreferenceKeys, EnterInTheListPressesNothing) {
  SetFocus(world_.Control("lstPrefURL"));
  world_.PressKey(VK_RETURN);
  EXPECT_THAT(events_.told, Not(Contains(HasSubstr("Click"))));
}

TEST_F(PreferenceKeys, DeleteInTheListIsReported) {
  world_.Select(2);
  events_.told.clear();
  world_.PressKey(VK_DELETE);
  EXPECT_THAT(events_.told, ElementsAre("lstPrefURL_KeyDown 46"));
}

TEST_F(PreferenceKeys, DeleteInTheTextBoxStaysThere) {
  world_.Type("ab");
  world_.PressKey(VK_HOME);
  events_.told.clear();
  world_.PressKey(VK_DELETE);
  EXPECT_THAT(events_.told, ElementsAre("txtPrefUrl_KeyDown 46"));
  EXPECT_EQ(world_.window().UrlText(), "b");
}

TEST_F(PreferenceKeys, TheUnderlinedLettersPressTheirButtons) {
  for (const char* focus : {"txtPrefUrl", "lstPrefURL", "cmdPrefClose"}) {
    events_.told.clear();
    for (const wchar_t letter : {L'a', L'R', L'c'}) {
      SetFocus(world_.Control(focus));
      world_.PressWithAlt(letter);
    }
    EXPECT_THAT(events_.told,
                ElementsAre("cmdPrefOk_Click", "Command1_Click", "cmdPrefClose_Click"))
        << focus;
  }
}

TEST_F(PreferenceKeys, TheUnderlinedLetterOfTheDisabledButtonPressesNothing) {
  world_.window().EnableRemoveButton(false);
  world_.PressWithAlt(L'r');
  EXPECT_THAT(events_.told, IsEmpty());
}

TEST_F(PreferenceKeys, EscapeClosesNothing) {
  for (const char* focus : {"txtPrefUrl", "lstPrefURL", "cmdPrefClose"}) {
    SetFocus(world_.Control(focus));
    world_.PressKey(VK_ESCAPE);
  }
  EXPECT_TRUE(world_.window().IsLoaded());
  EXPECT_THAT(events_.told, Not(Contains(HasSubstr("Click"))));
}

TEST_F(PreferenceKeys, AKeyMayCloseTheDialog) {
  events_.on_told = [&](const std::string& what) {
    if (what == "txtPrefUrl_KeyDown 13") {
      world_.window().Unload();
    }
  };
  world_.PressKey(VK_RETURN);
  EXPECT_THAT(events_.told, ElementsAre("txtPrefUrl_KeyDown 13", "Form_Unload"));
  EXPECT_FALSE(world_.window().IsLoaded());
}

TEST_F(PreferenceKeys, AKeyOfAnotherWindowIsNotTaken) {
  SetFocus(world_.owner_window());
  world_.PressKey(VK_RETURN);
  world_.PressKey(VK_TAB);
  EXPECT_THAT(events_.told, IsEmpty());
  EXPECT_EQ(GetFocus(), world_.owner_window());
}

TEST_F(PreferenceKeys, GivingTheTextBoxTheFocusSelectsItsText) {
  world_.Type("wrong");
  world_.window().FocusUrlBox();
  world_.Type("r");
  EXPECT_EQ(world_.window().UrlText(), "r");
}

}  // namespace
}  // namespace kitbay::contract
