// The end of the main window and of the program.
#include <functional>

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

TEST_F(MainFormUnload, LetsEverythingGo) {
  window.Unload();
  EXPECT_TRUE(suite_objects.Find(kDownload)->is_released);
  EXPECT_TRUE(suite_objects.Find(kTransport)->is_released);
  EXPECT_EQ(active_objects.entry_count(), 0U);
  EXPECT_THROW(page.document(), base::Failure);
}

TEST_F(MainFormUnload, ObjSetToNothingEmptiesTheListsOfSources) {
  ASSERT_THAT(sources.UpdateSources, Not(IsEmpty()));
  window.Unload();
  EXPECT_THAT(sources.UpdateSources, Each(""));
  EXPECT_THAT(sources.PendingSources, Each(""));
}

TEST_F(MainFormUnload, ObjSetToNothingDropsPendingInstallsAndLists) {
  shown.ids = {"news"};
  new_components.addon.push_back({});
  pending_packages.channel = {.file_path = "/sky.zip", .name = "sky", .row_id = "1"};
  session.libraries = {"one.dll", "two.dll"};
  session.record[0] = "sky";
  session.restart = true;
  ASSERT_NE(session.file_system, nullptr);
  window.Unload();
  EXPECT_THAT(shown.ids, IsEmpty());
  EXPECT_THAT(new_components.addon, IsEmpty());
  EXPECT_EQ(pending_packages.channel.name, "");
  EXPECT_THAT(session.libraries, IsEmpty());
  EXPECT_EQ(session.record[0], "");
  EXPECT_FALSE(session.restart);
  EXPECT_EQ(session.file_system, nullptr);
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

/// A transport object that tells when it is shut down.
class TellingTransport : public platform::TransportObject {
 public:
  explicit TellingTransport(const std::function<void()>& on_shut_down)
      : on_shut_down_(on_shut_down) {}

  void SetUp(platform::OvTransportEvents& /*receiver*/) override {}
  void Request(const std::string& /*document*/) override {}
  void ShutDown() override { on_shut_down_(); }

 private:
  const std::function<void()>& on_shut_down_;
};

class TellingSuiteObjects : public platform::SuiteObjects {
 public:
  std::unique_ptr<platform::FileSystemObject> CreateFileSystemObject(
      const std::string& /*prog_id*/) override {
    throw base::Failure(base::RuntimeError::kCannotCreateObject);
  }
  std::unique_ptr<platform::TransportObject> CreateTransportObject(
      const std::string& /*prog_id*/) override {
    return std::make_unique<TellingTransport>(on_shut_down);
  }

  std::function<void()> on_shut_down;
};

class ShutDown : public FakeProgram {
 protected:
  ShutDown() {
    other.Load();
    other.WebBrowser1_DocumentComplete();
  }

  TellingSuiteObjects telling;
  MainForm other{{log,
                  settings,
                  files,
                  desktop,
                  keys,
                  telling,
                  window,
                  window.message_loop(),
                  installation_check,
                  manager_registration,
                  preference_form,
                  page,
                  page_events,
                  sources,
                  source_file,
                  update_driver,
                  requests,
                  transfer_events,
                  shown,
                  new_components,
                  pending_packages,
                  session}};
};

TEST_F(ShutDown, ComesBeforeTheListsAreEmptied) {
  std::vector<std::size_t> noted;
  telling.on_shut_down = [&] { noted.push_back(sources.UpdateSources.size()); };
  sources.UpdateSources = {"updates.example/list.xml"};
  window.Unload();
  EXPECT_THAT(noted, ElementsAre(1U, 1U));
}

TEST_F(ShutDown, ComesAfterTheLastRequest) {
  std::vector<bool> taken;
  telling.on_shut_down = [&] {
    taken.push_back(requests.Updates("updates.example", "/a", "C:\\a"));
  };
  ASSERT_TRUE(requests.Updates("updates.example", "/a", "C:\\a"));
  window.Unload();
  EXPECT_THAT(taken, ElementsAre(false, false));
  EXPECT_FALSE(requests.Updates("updates.example", "/a", "C:\\a"));
}

}  // namespace
}  // namespace kitbay::app
