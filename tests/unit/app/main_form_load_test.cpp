// The load sequence of the main window.
#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MainFormLoad : public FakeProgram {};

const std::string kTesselKey = std::string(kUninstallKey) + "Tessel";

TEST_F(MainFormLoad, GoesThroughItsStepsInOrder) {
  form.Load();
  EXPECT_THAT(
      journal.calls(),
      ElementsAre("Load", "Create FileSystemLib.FileSystemObject", "PlatformId",
                  "fso.FileExists C:\\Ovalink\\Kitbay\\install.txt", "Open " + kTesselKey + " 0x3f",
                  "Open " + kTesselKey + " 0x1", "Query " + kTesselKey + " [InstallLocation] 100",
                  "Query " + kTesselKey + " [Displayname] 100",
                  "Query " + kTesselKey + " [ApplicationEXE] 100", "Close " + kTesselKey,
                  "RefusesFiles C:\\Ovalink", "RefusesFiles C:\\Ovalink\\Temp",
                  "RefusesFiles C:\\Ovalink\\Kitbay", "RefusesFiles C:\\Ovalink\\addons",
                  "RefusesFiles C:\\Ovalink\\Channels", "RefusesFiles C:\\Ovalink\\Datastore",
                  "fso.FolderExists C:\\Ovalink/Temp", "fso.CreateFolder C:\\Ovalink/Temp",
                  "fso.CreateTextFile C:\\Ovalink\\KitbayLog.log",
                  "fso.WriteLine C:\\Ovalink\\KitbayLog.log", "Show",
                  "Navigate C:\\Ovalink\\Kitbay\\AddonUpdates.html", "SetParent status bar",
                  "Move 6 8 94 14", "SetVisible true", "SetValue 0",
                  "SetHelpFile C:\\Ovalink\\help\\tesselhelp.chm::/AddRemovefeatures.html"));
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_TRUE(window.shown());
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormLoad, TheWorkingFolderLiesInTheInstallationFolder) {
  form.Load();
  EXPECT_TRUE(files.IsFolder("C:\\Ovalink\\Temp"));
}

TEST_F(MainFormLoad, AWorkingFolderThatIsThereStays) {
  files.AddFile("C:\\Ovalink\\Temp\\left.zip", "zip");
  form.Load();
  EXPECT_EQ(Count("fso.CreateFolder C:\\Ovalink/Temp"), 0);
  EXPECT_TRUE(files.IsFile("C:\\Ovalink\\Temp\\left.zip"));
}

TEST_F(MainFormLoad, TheNamesOfTheMainClientStartFromTheirDefaults) {
  files.AddFile("C:\\Ovalink\\Kitbay\\install.txt", "one line\r\n");
  form.Load();
  EXPECT_EQ(settings.MainAppExe, "Tessel.exe");
  EXPECT_EQ(settings.MainAppName, "Application");
}

TEST_F(MainFormLoad, TheLogOfTheRunBeforeIsOverwritten) {
  files.AddFile(kLogPath, "old entries\r\n");
  form.Load();
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormLoad, InAnUnwritableInstallationFolderTheWindowIsShownWithoutALog) {
  files.SetUnwritable("C:\\Ovalink");
  form.Load();
  EXPECT_TRUE(form.IsLoaded());
  ASSERT_TRUE(window.shown());
  EXPECT_EQ(Log(), "(none)");
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
  EXPECT_EQ(Count("SetValue 0"), 1);
  EXPECT_EQ(Count("SetHelpFile C:\\Ovalink\\help\\tesselhelp.chm::/AddRemovefeatures.html"), 1);
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  window.Unload();
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_EQ(Log(), "(none)");
}

TEST_F(MainFormLoad, WithoutALogErrorsAreDropped) {
  files.SetUnwritable("C:\\Ovalink");
  desktop.FailHelp(base::Failure(-2147467259, "Unspecified error"));
  form.Load();
  window.events()->lblHelp_Click();
  EXPECT_EQ(Log(), "(none)");
}

TEST_F(MainFormLoad, ALogThatIsInUseLeavesTheWindowShown) {
  files.AddFile(kLogPath, "another program's");
  files.SetInUse(kLogPath);
  form.Load();
  EXPECT_TRUE(window.shown());
  EXPECT_EQ(Log(), "another program's");
}

TEST_F(MainFormLoad, WithoutTheFileSystemObjectTheCheckRunsAndTheWindowIsShown) {
  suite_objects.missing.insert(kFileSystemObject);
  form.Load();
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
  EXPECT_TRUE(window.shown());
  EXPECT_EQ(Log(), "(none)");
  EXPECT_FALSE(files.IsFolder("C:\\Ovalink\\Temp"));
  EXPECT_THAT(CallsOf({"fso."}), IsEmpty());
}

TEST_F(MainFormLoad, WithoutAnUninstallEntryTheWindowIsUnloadedAndTheProgramEnds) {
  settings.program_folder = "C:\\Elsewhere";
  keys.DenyAccess(kTesselKey);
  form.Load();
  EXPECT_THAT(CallsOf({"ShowMessage"}),
              ElementsAre("ShowMessage [Kitbay has detected that Application has not been "
                          "installed properly. Please reinstall Application.] [Kitbay] 0"));
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_FALSE(window.shown());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_THAT(CallsOf({"Show", "Navigate"}), SizeIs(1)) << "only the message is shown";
  EXPECT_THAT(CallsOf({"fso.Create", "fso.Delete"}), IsEmpty());
  EXPECT_EQ(Log(), "(none)");
}

TEST_F(MainFormLoad, AFailureToShowThePageIsLogged) {
  window.calls().FailMember("Navigate", base::Failure(-2147467259, "Unspecified error"));
  form.Load();
  EXPECT_TRUE(window.shown());
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::Form_Load", "-2147467259", "Unspecified error"));
  EXPECT_EQ(Count("SetParent status bar"), 0);
}

TEST_F(MainFormLoad, AProgressBarThatCannotBePlacedDoesNotEndTheLoad) {
  window.calls().FailMember("SetParent", base::Failure(-2147467259, "Unspecified error"));
  form.Load();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::ShowProgressInStatusBar", "-2147467259",
                                    "Unspecified error"));
  EXPECT_EQ(Count("SetHelpFile C:\\Ovalink\\help\\tesselhelp.chm::/AddRemovefeatures.html"), 1);
}

}  // namespace
}  // namespace kitbay::app
