// The end of the main window and of the program.
#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class MainFormUnload : public FakeProgram {
 protected:
  MainFormUnload() {
    StartAndLoadPage();
    journal.Clear();
  }
};

TEST_F(MainFormUnload, GoesThroughItsStepsInOrder) {
  window.Unload();
  EXPECT_THAT(
      journal.calls(),
      ElementsAre("Unload", "SetParent window", "SetVisible false", "RevokeActiveObject 1",
                  "DisconnectObject", "ShutDown URLDownloadLib.URLDownload",
                  "ShutDown XMLRPCTRANSPORT.xTransport", "fso.FolderExists C:\\Ovalink\\Temp",
                  "fso.DeleteFolder C:\\Ovalink\\Temp", "DisconnectDocument", "CloseAllHelp",
                  "fso.Close C:\\Ovalink\\KitbayLog.log", "Quit"));
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormUnload, ReleasesEverything) {
  window.Unload();
  EXPECT_TRUE(suite_objects.Find(kDownload)->is_released);
  EXPECT_TRUE(suite_objects.Find(kTransport)->is_released);
  EXPECT_EQ(active_objects.entry_count(), 0U);
  EXPECT_THROW(page.document.document(), base::Failure);
}

TEST_F(MainFormUnload, ObjSetToNothingEmptiesTheListsOfSources) {
  ASSERT_THAT(page.sources.UpdateSources, Not(IsEmpty()));
  window.Unload();
  EXPECT_THAT(page.sources.UpdateSources, Each(""));
  EXPECT_THAT(page.sources.PendingSources, Each(""));
}

TEST_F(MainFormUnload, ObjSetToNothingDropsPendingInstallsAndLists) {
  page.shown.ids = {"news"};
  page.new_components.addon.push_back({});
  program.exchange.pending_packages.channel = {
      .file_path = "/sky.zip", .name = "sky", .row_id = "1"};
  program.session.libraries = {"one.dll", "two.dll"};
  program.session.record[0] = "sky";
  program.session.restart = true;
  ASSERT_NE(program.session.file_system, nullptr);
  window.Unload();
  EXPECT_THAT(page.shown.ids, IsEmpty());
  EXPECT_THAT(page.new_components.addon, IsEmpty());
  EXPECT_EQ(program.exchange.pending_packages.channel.name, "");
  EXPECT_THAT(program.session.libraries, IsEmpty());
  EXPECT_EQ(program.session.record[0], "");
  EXPECT_FALSE(program.session.restart);
  EXPECT_EQ(program.session.file_system, nullptr);
}

TEST_F(MainFormUnload, TheWorkingFolderGoesWithEverythingInIt) {
  files.AddFile("C:\\Ovalink\\Temp\\notes\\notes.dll", "MZ");
  files.AddFile("C:\\Ovalink\\Temp\\notes.zip", "PK");
  window.Unload();
  EXPECT_FALSE(files.IsFolder("C:\\Ovalink\\Temp"));
  EXPECT_TRUE(files.IsFolder("C:\\Ovalink\\Kitbay"));
}

TEST_F(MainFormUnload, AWorkingFolderThatIsGoneIsNoFailure) {
  fakes::MemoryFileSystemObject(files).DeleteFolder("C:\\Ovalink\\Temp", true);
  journal.Clear();
  window.Unload();
  EXPECT_THAT(CallsOf({"fso.DeleteFolder"}), IsEmpty());
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormUnload, AReadOnlyFileStopsTheDeletionWhichIsLoggedAndTheProgramEnds) {
  files.AddFile("C:\\Ovalink\\Temp\\kept.zip", "PK");
  files.SetReadOnly("C:\\Ovalink\\Temp\\kept.zip");
  window.Unload();
  EXPECT_TRUE(files.IsFile("C:\\Ovalink\\Temp\\kept.zip"));
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::Form_Unload", "70", "Permission denied"));
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(window.Handle(), platform::WindowHandle{});
}

TEST_F(MainFormUnload, PageAndDocumentAreDroppedAlsoWhenAStepBeforeFails) {
  files.AddFile("C:\\Ovalink\\Temp\\kept.zip", "PK");
  files.SetReadOnly("C:\\Ovalink\\Temp\\kept.zip");
  const auto document = window.document();
  window.Unload();
  EXPECT_FALSE(page.document.IsConnected());
  EXPECT_FALSE(document->Click(document->Body()));
  EXPECT_EQ(Count("DisconnectDocument"), 1);
  EXPECT_EQ(Count("CloseAllHelp"), 0);
}

TEST_F(MainFormUnload, WithoutAnInstallationFolderNoFolderIsDeleted) {
  files.AddFile("C:\\Temp\\others.txt", "theirs");
  settings.InstallFolder.clear();
  window.Unload();
  EXPECT_TRUE(files.IsFile("C:\\Temp\\others.txt"));
  EXPECT_THAT(CallsOf({"fso.FolderExists", "fso.DeleteFolder"}), IsEmpty());
  EXPECT_TRUE(window.message_loop().quit());
}

TEST_F(MainFormUnload, LaterErrorsFindNoLog) {
  window.Unload();
  journal.Clear();
  form.lblHelp_Click();
  window.calls().FailMember("SetHelpCursor", base::Failure(53, "File not found"));
  form.lblHelp_MouseMove();
  EXPECT_THAT(CallsOf({"fso."}), IsEmpty());
  EXPECT_EQ(Log(), Header());
}

TEST_F(MainFormUnload, AfterwardsThePageIsDeaf) {
  const auto document = window.document();
  window.Unload();
  const auto body = document->Body();
  EXPECT_FALSE(document->Click(body));
}

class EarlyUnload : public FakeProgram {};

TEST_F(EarlyUnload, BeforeThePageHasLoadedThereIsNothingToShutDown) {
  ASSERT_TRUE(Start());
  journal.Clear();
  window.Unload();
  EXPECT_THAT(CallsOf({"ShutDown"}), IsEmpty());
  EXPECT_EQ(Log(), Header());
  EXPECT_TRUE(window.message_loop().quit());
}

TEST_F(EarlyUnload, AnUnregisteredProgramWithdrawsCookieZeroAndEndsLikeAnyOther) {
  active_objects.table_refuses = true;
  StartAndLoadPage();
  journal.Clear();
  window.Unload();
  EXPECT_THAT(CallsOf({"Revoke", "Disconnect"}),
              ElementsAre("RevokeActiveObject 0", "DisconnectObject", "DisconnectDocument"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(EarlyUnload, WithoutTheFileSystemObjectTheProgramEndsLikeAnyOther) {
  suite_objects.missing.insert(kFileSystemObject);
  StartAndLoadPage();
  window.Unload();
  EXPECT_EQ(Count("DisconnectDocument"), 1);
  EXPECT_EQ(Count("CloseAllHelp"), 1);
  EXPECT_TRUE(window.message_loop().quit());
}

class ShutDown : public FakeProgram {
 protected:
  ShutDown() { StartAndLoadPage(); }
};

TEST_F(ShutDown, ComesBeforeTheListsAreEmptied) {
  std::vector<std::size_t> noted;
  suite_objects.on_shut_down = [&] { noted.push_back(page.sources.UpdateSources.size()); };
  page.sources.UpdateSources = {"updates.example/list.xml"};
  window.Unload();
  EXPECT_THAT(noted, ElementsAre(1U, 1U));
}

TEST_F(ShutDown, ThatFailsIsLoggedAndEndsTheSequence) {
  page.sources.UpdateSources = {"updates.example/list.xml"};
  suite_objects.on_shut_down = [] { throw base::Failure(-2147467259, "Unspecified error"); };
  journal.Clear();
  window.Unload();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::Form_Unload", "-2147467259", "Unspecified error"));
  EXPECT_THAT(CallsOf({"ShutDown", "fso.DeleteFolder", "Disconnect", "CloseAllHelp", "Quit"}),
              ElementsAre("DisconnectObject", "ShutDown URLDownloadLib.URLDownload",
                          "DisconnectDocument", "Quit"));
  EXPECT_THAT(page.sources.UpdateSources, ElementsAre("updates.example/list.xml"));
  EXPECT_FALSE(page.document.IsConnected());
  EXPECT_FALSE(program.exchange.requests.Updates("updates.example", "/a", "C:\\a"));
}

TEST_F(ShutDown, ComesAfterTheLastRequest) {
  std::vector<bool> taken;
  suite_objects.on_shut_down = [&] {
    taken.push_back(program.exchange.requests.Updates("updates.example", "/a", "C:\\a"));
  };
  ASSERT_TRUE(program.exchange.requests.Updates("updates.example", "/a", "C:\\a"));
  window.Unload();
  EXPECT_THAT(taken, ElementsAre(false, false));
  EXPECT_FALSE(program.exchange.requests.Updates("updates.example", "/a", "C:\\a"));
}

}  // namespace
}  // namespace kitbay::app
