// Closing the main client, and starting it again.
#include "flow_fixture.h"

namespace kitbay::install {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kUpdateQuestion =
    "ShowMessage [To Update Notes Addon Tessel Messenger needs to be shut down. Tessel Messenger "
    "will restart after changes take effect.] [Kitbay] 1";

class CheckExeForUpdate : public FlowTest {
 protected:
  bool Check(const std::string& kind = "Addon") {
    return main_client_.CheckExeForUpdate("Notes", kind);
  }
};

TEST_F(CheckExeForUpdate, ARunningClientIsClosedWhenTheUserAgrees) {
  StartClient();
  EXPECT_TRUE(Check());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient, kUpdateQuestion, CloseClient()));
  EXPECT_FALSE(desktop_.HasWindow(client_window_));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CheckExeForUpdate, WithoutARunningClientNobodyIsAsked) {
  EXPECT_TRUE(Check());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient));
}

TEST_F(CheckExeForUpdate, AWindowOfAnotherClassOrCaptionIsNotTheClient) {
  desktop_.AddWindow("ThunderRT6FormDC", "Tessel Messenger");
  desktop_.AddWindow("Notepad", "OvlTessel");
  EXPECT_TRUE(Check());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient));
}

TEST_F(CheckExeForUpdate, CancelLeavesTheClientRunning) {
  StartClient();
  desktop_.AddAnswer(platform::kAnswerCancel);
  EXPECT_FALSE(Check());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient, kUpdateQuestion));
  EXPECT_TRUE(desktop_.HasWindow(client_window_));
}

TEST_F(CheckExeForUpdate, AnyAnswerButOkCancels) {
  StartClient();
  desktop_.AddAnswer(7);
  EXPECT_FALSE(Check());
  EXPECT_TRUE(desktop_.HasWindow(client_window_));
}

TEST_F(CheckExeForUpdate, AnEmptyKindWordLeavesTwoBlanks) {
  StartClient();
  Check("");
  EXPECT_EQ(desktop_.calls()[1],
            "ShowMessage [To Update Notes  Tessel Messenger needs to be shut down. Tessel "
            "Messenger will restart after changes take effect.] [Kitbay] 1");
}

TEST_F(CheckExeForUpdate, AClientThatDoesNotCloseIsNotWaitedForOrLookedForAgain) {
  StartClient();
  desktop_.IgnoreClose(client_window_);
  EXPECT_TRUE(Check());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient, kUpdateQuestion, CloseClient()));
}

TEST_F(CheckExeForUpdate, ARunTimeErrorIsLoggedAndLetsTheUpdateGoOn) {
  desktop_.search_failure = base::Failure(-2147467259, "Unspecified error");
  EXPECT_TRUE(Check());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::CheckExeForUpdate", -2147467259, "Unspecified error")));
}

class AskBeforeRemoval : public FlowTest {};

TEST_F(AskBeforeRemoval, ARunningClientIsClosedWhenTheUserAgrees) {
  StartClient();
  EXPECT_EQ(main_client_.AskBeforeRemoval("Notes", "Addon"), RemovalAnswer::kClientClosed);
  EXPECT_THAT(desktop_.calls(),
              ElementsAre(kFindClient,
                          "ShowMessage [To Remove Notes Addon Tessel Messenger  needs to be shut "
                          "down. Please restart Tessel Messenger for the changes to take effect.] "
                          "[Kitbay] 1",
                          CloseClient()));
}

TEST_F(AskBeforeRemoval, CancelLeavesTheClientRunning) {
  StartClient();
  desktop_.AddAnswer(platform::kAnswerCancel);
  EXPECT_EQ(main_client_.AskBeforeRemoval("Notes", "Addon"), RemovalAnswer::kCancelled);
  EXPECT_TRUE(desktop_.HasWindow(client_window_));
}

TEST_F(AskBeforeRemoval, WithoutARunningClientTheQuestionIsAnother) {
  EXPECT_EQ(main_client_.AskBeforeRemoval("Notes", "Addon"), RemovalAnswer::kClientNotRunning);
  EXPECT_THAT(
      desktop_.calls(),
      ElementsAre(kFindClient,
                  "ShowMessage [Are you sure you want to Remove the Notes Addon.] [Kitbay] 1"));
}

TEST_F(AskBeforeRemoval, WithoutARunningClientTheUserMayCancelAsWell) {
  desktop_.AddAnswer(platform::kAnswerCancel);
  EXPECT_EQ(main_client_.AskBeforeRemoval("Notes", ""), RemovalAnswer::kCancelled);
  EXPECT_EQ(desktop_.calls()[1],
            "ShowMessage [Are you sure you want to Remove the Notes .] [Kitbay] 1");
}

class LaunchMainApplication : public FlowTest {};

TEST_F(LaunchMainApplication, StartsTheClientOfTheInstallationFolder) {
  main_client_.LaunchMainApplication();
  EXPECT_THAT(desktop_.calls(), ElementsAre("StartProgram [C:\\Ovalink\\Tessel.exe]"));
}

TEST_F(LaunchMainApplication, AMissingClientIsOnlyLogged) {
  desktop_.FailStartProgram(base::Failure(base::RuntimeError::kFileNotFound));
  main_client_.LaunchMainApplication();
  EXPECT_THAT(desktop_.calls(), ElementsAre("StartProgram [C:\\Ovalink\\Tessel.exe]"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::LaunchMainApplication", 53, "File not found")));
}

TEST_F(LaunchMainApplication, WithAdministratorsRightsStartsTheClientAsTheUser) {
  settings_.is_administrator = true;
  main_client_.LaunchMainApplication();
  EXPECT_THAT(desktop_.calls(), ElementsAre("StartProgramAsUser [C:\\Ovalink\\Tessel.exe]"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(LaunchMainApplication, AClientThatCannotBeStartedAsTheUserIsLeftToTheUser) {
  settings_.is_administrator = true;
  desktop_.FailStartProgram(base::Failure(base::RuntimeError::kCannotCreateObject));
  main_client_.LaunchMainApplication();
  EXPECT_THAT(desktop_.calls(),
              ElementsAre("StartProgramAsUser [C:\\Ovalink\\Tessel.exe]",
                          "ShowMessage [Tessel Messenger could not be started again with your own "
                          "rights. Please start it yourself.] [Kitbay] 0"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::LaunchMainApplication", 429,
                                              "ActiveX component can't create object")));
}

TEST_F(LaunchMainApplication, AMissingClientIsOnlyLoggedWithAdministratorsRightsToo) {
  settings_.is_administrator = true;
  desktop_.FailStartProgram(base::Failure(base::RuntimeError::kFileNotFound));
  main_client_.LaunchMainApplication();
  EXPECT_THAT(desktop_.calls(), ElementsAre("StartProgramAsUser [C:\\Ovalink\\Tessel.exe]"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::LaunchMainApplication", 53, "File not found")));
}

}  // namespace
}  // namespace kitbay::install
