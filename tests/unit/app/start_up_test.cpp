// The start of the program, first or second.
#include "app/start_up.h"

#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The manager of another instance of the program.
class OtherManager : public platform::ManagerService {
 public:
  explicit OtherManager(fakes::RecordingDesktop& desktop) : desktop_(desktop) {}

  void BringToFront() override {
    ++raised;
    desktop_calls_before = desktop_.calls();
    if (fails) {
      throw base::Failure(fakes::kDisconnected, "Disconnected.");
    }
  }

  int raised = 0;
  bool fails = false;
  std::vector<std::string> desktop_calls_before;

 private:
  fakes::RecordingDesktop& desktop_;
};

class SecondStart : public FakeProgram {
 protected:
  SecondStart() { instance_mark.previous_instance = true; }

  OtherManager other_{desktop};
};

TEST_F(SecondStart, RaisesTheFirstWindowAndEndsWithoutAWindow) {
  active_objects.running_manager = &other_;
  EXPECT_FALSE(Start());
  EXPECT_EQ(other_.raised, 1);
  EXPECT_THAT(journal.calls(), ElementsAre("GetActive Kitbay.Manager", "PassForegroundRight"));
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(SecondStart, PassesTheForegroundRightOnBeforeItAsksForTheWindow) {
  active_objects.running_manager = &other_;
  Start();
  EXPECT_THAT(other_.desktop_calls_before, ElementsAre("PassForegroundRight"));
}

TEST_F(SecondStart, IsNeitherRegisteredNorOfferedAndLogsNothing) {
  active_objects.running_manager = &other_;
  files.AddFile(kLogPath, "the first one's log");
  Start();
  EXPECT_EQ(active_objects.entry_count(), 0U);
  EXPECT_THAT(com_server.registrations, IsEmpty());
  EXPECT_EQ(com_server.offered, nullptr);
  EXPECT_EQ(Log(), "the first one's log");
  EXPECT_EQ(files.operation_count(), 0U);
}

TEST_F(SecondStart, WithOtherRightsThanTheFirstEndsQuietly) {
  active_objects.running_manager = &other_;
  active_objects.running_manager_user = fakes::User::kAdministrator;
  EXPECT_FALSE(Start());
  EXPECT_EQ(other_.raised, 0);
  EXPECT_THAT(journal.calls(), ElementsAre("GetActive Kitbay.Manager"));
  EXPECT_EQ(files.operation_count(), 0U);
}

TEST_F(SecondStart, WithMoreRightsThanTheFirstEndsQuietly) {
  active_objects.running_manager = &other_;
  RunAsAdministrator();
  EXPECT_FALSE(Start());
  EXPECT_EQ(other_.raised, 0);
  EXPECT_EQ(elevation.questions, 0);
  EXPECT_EQ(files.operation_count(), 0U);
}

TEST_F(SecondStart, WithoutARunningObjectEndsQuietly) {
  EXPECT_FALSE(Start());
  EXPECT_THAT(journal.calls(), ElementsAre("GetActive Kitbay.Manager"));
  EXPECT_EQ(Log(), "(none)");
}

TEST_F(SecondStart, ThatTheFirstDoesNotAnswerEndsQuietly) {
  other_.fails = true;
  active_objects.running_manager = &other_;
  EXPECT_FALSE(Start());
  EXPECT_EQ(other_.raised, 1);
  EXPECT_EQ(Log(), "(none)");
  EXPECT_THAT(CallsOf({"Load", "ShowMessage"}), IsEmpty());
}

TEST_F(SecondStart, HandlesNoMessages) {
  active_objects.running_manager = &other_;
  program.Run();
  EXPECT_EQ(other_.raised, 1);
  EXPECT_THAT(CallsOf({"Run"}), IsEmpty());
}

class FirstStart : public FakeProgram {};

TEST_F(FirstStart, HandlesMessagesUntilItsWindowIsUnloadedAndThenWithdrawsItsClasses) {
  const platform::ServiceFactory* offered = nullptr;
  window.message_loop().Post([&] {
    offered = com_server.offered;
    window.Unload();
  });
  program.Run();
  EXPECT_THAT(CallsOf({"Load", "Run", "Quit"}), ElementsAre("Load", "Run", "Quit"));
  EXPECT_EQ(offered, &program.services);
  EXPECT_EQ(com_server.offered, nullptr);
}

TEST_F(FirstStart, LoadsTheWindowBeforeItBecomesFindable) {
  EXPECT_TRUE(Start());
  EXPECT_THAT(CallsOf({"Load", "Show", "Navigate", "SetHelpFile", "ClassId", "Register"}),
              ElementsAre("Load", "Show", "Navigate C:\\Ovalink\\Kitbay\\AddonUpdates.html",
                          "SetHelpFile C:\\Ovalink\\help\\tesselhelp.chm::/AddRemovefeatures.html",
                          "ClassIdFromProgId Kitbay.Manager", "RegisterActiveObject"));
  EXPECT_EQ(active_objects.entry_count(), 1U);
  EXPECT_EQ(Log(), Header());
}

TEST_F(FirstStart, LooksForNoRunningObject) {
  Start();
  EXPECT_THAT(CallsOf({"GetActive", "PassForegroundRight"}), IsEmpty());
}

TEST_F(FirstStart, OffersItsClasses) {
  Start();
  EXPECT_THAT(com_server.registrations, ElementsAre(platform::ClassesOf::kUser));
  EXPECT_EQ(com_server.offered, &program.services);
}

TEST_F(FirstStart, GivesItsRegistryToClientsOutside) {
  Start();
  EXPECT_EQ(com_server.CreateRegistry()->GetAppDataPath(), "C:\\Ana");
}

TEST_F(FirstStart, WithAdministratorsRightsOffersItsClassesToTheMachineAndIsFound) {
  RunAsAdministrator();
  EXPECT_TRUE(Start());
  EXPECT_THAT(com_server.registrations, ElementsAre(platform::ClassesOf::kMachine));
  EXPECT_NO_THROW(active_objects.GetActive("Kitbay.Manager"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(FirstStart, WithoutAClassIdentifierRunsOnUnregistered) {
  active_objects.classes.clear();
  com_server.class_tables = nullptr;
  EXPECT_TRUE(Start());
  EXPECT_TRUE(window.shown());
  EXPECT_THAT(CallsOf({"Register"}), IsEmpty());
  EXPECT_EQ(Log(), Header());
  EXPECT_THROW(active_objects.GetActive("Kitbay.Manager"), base::Failure);
}

TEST_F(FirstStart, RefusedByTheTableRunsOnUnregistered) {
  active_objects.table_refuses = true;
  EXPECT_TRUE(Start());
  EXPECT_EQ(active_objects.entry_count(), 0U);
  EXPECT_EQ(Log(), Header());
}

TEST_F(FirstStart, WithoutClassesThatCanBeRegisteredRunsOnAndSaysSo) {
  com_server.registration_failure = base::Failure(-2147024891, "Access denied.");
  EXPECT_TRUE(Start());
  EXPECT_EQ(com_server.offered, &program.services);
  EXPECT_EQ(active_objects.entry_count(), 1U);
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::Main", "-2147024891", "Access denied."));
}

TEST_F(FirstStart, WithoutClassesThatCanBeOfferedRunsOnAndSaysSo) {
  com_server.class_object_failure = base::Failure(-2147024891, "Access denied.");
  EXPECT_TRUE(Start());
  EXPECT_EQ(active_objects.entry_count(), 1U);
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::Main", "-2147024891", "Access denied."));
}

TEST_F(FirstStart, OnAMachineWithoutTheSuiteEndsUnregistered) {
  keys.DenyAccess(std::string(kUninstallKey) + "Tessel");
  EXPECT_FALSE(Start());
  EXPECT_THAT(CallsOf({"ClassId", "Register"}), IsEmpty());
  EXPECT_EQ(com_server.offered, nullptr);
  EXPECT_TRUE(window.message_loop().quit());
}

TEST_F(FirstStart, WithoutAWindowEndsInsteadOfRunningUnseen) {
  window.calls().FailMember("Load", base::Failure(-2147467259, "Unspecified error"));
  EXPECT_FALSE(Start());
  EXPECT_THAT(journal.calls(), ElementsAre("Load"));
  EXPECT_EQ(com_server.offered, nullptr);
}

class BringToFront : public FakeProgram {
 protected:
  static std::vector<std::string> RaisingCalls() {
    // 65602 is the window's handle; -1 is topmost, -2 not topmost, 3 neither size nor position; 9
    // is restore, 5 show.
    return {"SetWindowPos 65602 -1 3", "SetWindowPos 65602 -2 3", "ShowWindow 65602 9",
            "ShowWindow 65602 5", "SetActiveWindow 65602"};
  }
};

TEST_F(BringToFront, RaisesTheWindowWithoutLeavingItTopmost) {
  Start();
  journal.Clear();
  active_objects.GetActive("Kitbay.Manager")->BringToFront();
  EXPECT_THAT(CallsOf({"SetWindowPos", "ShowWindow", "SetActiveWindow", "Load", "Show"}),
              ::testing::ElementsAreArray(RaisingCalls()));
}

TEST_F(BringToFront, OfAManagerFromOutsideRaisesTheWindowThatIsThere) {
  Start();
  journal.Clear();
  com_server.offered->CreateManager()->BringToFront();
  EXPECT_THAT(journal.calls(), ::testing::ElementsAreArray(RaisingCalls()));
}

TEST_F(BringToFront, LoadsAWindowThatIsNotLoaded) {
  form.BringToFront();
  EXPECT_TRUE(window.shown());
  EXPECT_EQ(Log(), Header());
  std::vector<std::string> expected = {"Load", "Show",
                                       "Navigate C:\\Ovalink\\Kitbay\\AddonUpdates.html"};
  for (const std::string& call : RaisingCalls()) {
    expected.push_back(call);
  }
  EXPECT_THAT(CallsOf({"Load", "Show", "Navigate", "SetWindowPos", "SetActiveWindow"}),
              ::testing::ElementsAreArray(expected));
}

TEST_F(BringToFront, WhileTheProgramEndsLoadsNothingAgain) {
  StartAndLoadPage();
  suite_objects.on_shut_down = [&] { form.BringToFront(); };
  window.Unload();
  form.BringToFront();
  EXPECT_EQ(Count("Load"), 1);
  EXPECT_EQ(Count("Show"), 1);
  EXPECT_THAT(CallsOf({"SetWindowPos"}), IsEmpty());
  EXPECT_EQ(Count("fso.CreateTextFile C:\\Ovalink\\KitbayLog.log"), 1);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(BringToFront, OfAManagerCreatedWhileTheProgramEndsLoadsNothingAgain) {
  StartAndLoadPage();
  suite_objects.on_shut_down = [&] { program.services.CreateManager()->BringToFront(); };
  window.Unload();
  EXPECT_EQ(Count("Load"), 1);
  EXPECT_EQ(Count("Show"), 1);
}

TEST_F(BringToFront, OfClientsIsOverBeforeAnythingElseEnds) {
  StartAndLoadPage();
  const auto client = com_server.CreateManager();
  const auto found = active_objects.GetActive("Kitbay.Manager");
  int refused = 0;
  suite_objects.on_shut_down = [&] {
    EXPECT_THROW(com_server.CreateManager(), base::Failure);
    EXPECT_THROW(client->BringToFront(), base::Failure);
    EXPECT_THROW(found->BringToFront(), base::Failure);
    ++refused;
  };
  window.Unload();
  EXPECT_EQ(refused, 2);
}

TEST_F(BringToFront, LogsItsFailure) {
  desktop.activation_failure = base::Failure(-2147467259, "Unspecified error");
  form.BringToFront();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::BringToFront", "-2147467259", "Unspecified error"));
}

}  // namespace
}  // namespace kitbay::app
