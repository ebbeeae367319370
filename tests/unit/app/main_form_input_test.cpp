// Keys, buttons and the help label of the main window.
#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MainFormInput : public FakeProgram {
 protected:
  MainFormInput() {
    EXPECT_TRUE(Start());
    journal.Clear();
  }
};

TEST_F(MainFormInput, EscapeUnloadsTheWindowAndThenTheDialog) {
  window.events()->Form_KeyDown(27);
  EXPECT_THAT(CallsOf({"Unload", "Quit", "Preference."}),
              ElementsAre("Unload", "Quit", "Preference.Unload"));
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainFormInput, EveryOtherKeyIsIgnored) {
  for (int key = 0; key < 256; ++key) {
    if (key != 27) {
      window.events()->Form_KeyDown(key);
    }
  }
  EXPECT_THAT(journal.calls(), IsEmpty());
  EXPECT_TRUE(form.IsLoaded());
}

TEST_F(MainFormInput, CloseUnloadsTheDialogAndThenTheWindow) {
  window.events()->CmdClose_Click();
  EXPECT_THAT(CallsOf({"Unload", "Quit", "Preference."}),
              ElementsAre("Preference.Unload", "Unload", "Quit"));
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainFormInput, DirectoriesShowsTheDialogAndThenItsUrlBox) {
  window.events()->cmdPreference_Click();
  EXPECT_THAT(CallsOf({"Preference."}), ElementsAre("Preference.Show", "Preference.FocusUrlBox"));
}

TEST_F(MainFormInput, HelpShowsItsTopic) {
  window.events()->lblHelp_Click();
  EXPECT_THAT(journal.calls(),
              ElementsAre("DisplayHelpTopic "
                          "[C:\\Ovalink\\help\\tesselhelp.chm::/AddRemovefeatures.html]"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormInput, HelpThatCannotBeShownIsReportedAndLogged) {
  desktop.FailHelp(base::Failure(base::RuntimeError::kFileNotFound));
  window.events()->lblHelp_Click();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::lblHelp_Click", "53", "File not found"));
  EXPECT_EQ(Count("ShowMessage [Cannot open the help file C:\\Ovalink\\help\\tesselhelp.chm.] "
                  "[Kitbay] 0"),
            1);
}

TEST_F(MainFormInput, TheHelpCursorIsLoadedAgainOnEveryMove) {
  window.events()->lblHelp_MouseMove();
  window.events()->lblHelp_MouseMove();
  EXPECT_THAT(journal.calls(), ElementsAre("SetHelpCursor C:\\Ovalink\\Channels\\HAND-M.cur",
                                           "SetHelpCursor C:\\Ovalink\\Channels\\HAND-M.cur"));
}

TEST_F(MainFormInput, AMissingHelpCursorIsOnlyLoggedOnEveryMove) {
  window.calls().FailMember("SetHelpCursor", base::Failure(base::RuntimeError::kFileNotFound));
  window.events()->lblHelp_MouseMove();
  window.events()->lblHelp_MouseMove();
  const std::string entry = Entry("Kitbay::lblHelp_MouseMove", "53", "File not found");
  EXPECT_EQ(Log(), Header() + entry + entry);
  EXPECT_TRUE(form.IsLoaded());
}

class FailingDialog : public MainFormInput {
 protected:
  void LetFail(const std::string& member) {
    preference_window.calls().FailMember(member, base::Failure(-2147467259, "Unspecified error"));
  }
};

TEST_F(FailingDialog, IsLoggedUnderTheHandlersName) {
  LetFail("Load");
  window.events()->cmdPreference_Click();
  preference_window.calls().FailNothing();
  LetFail("Unload");
  window.events()->CmdClose_Click();
  EXPECT_EQ(Log(), Header() +
                       Entry("Kitbay::cmdPreference_Click", "-2147467259", "Unspecified error") +
                       Entry("Kitbay::CmdClose_Click", "-2147467259", "Unspecified error"));
}

TEST_F(FailingDialog, DoesNotKeepEscapeFromEndingTheProgram) {
  LetFail("Unload");
  window.events()->Form_KeyDown(27);
  EXPECT_TRUE(window.message_loop().quit());
}

}  // namespace
}  // namespace kitbay::app
