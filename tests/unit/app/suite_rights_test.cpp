// What a user without the right to change the suite's folder may do, and what Kitbay says about it.
#include "app/suite_rights.h"

#include "fake_program.h"

namespace kitbay::app {
namespace {

using platform::ElevationAnswer;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kNotice =
    "ShowMessage [You do not have permission to change files in C:\\Ovalink. Kitbay shows what is "
    "installed, but it cannot ask the update sources, and it cannot install, update or remove "
    "anything.\n\nStart Kitbay again and agree when Windows asks for an administrator, or ask one "
    "for help.] [Kitbay] 0";
constexpr const char* kAnswer =
    "ShowMessage [You do not have permission to change files in C:\\Ovalink. Kitbay cannot "
    "install, "
    "update or remove anything there.\n\nStart Kitbay again and agree when Windows asks for an "
    "administrator, or ask one for help.] [Kitbay] 0";

/// A standard user on a suite whose folder belongs to an administrator.
class StandardUser : public FakeProgram {
 protected:
  StandardUser() { files.SetAdministrators("C:\\Ovalink"); }
};

TEST_F(StandardUser, IsAskedForRightsOnceBeforeTheLogIsOpened) {
  ASSERT_TRUE(Start());
  EXPECT_EQ(elevation.questions, 1);
  EXPECT_EQ(Log(), "(none)");
  EXPECT_FALSE(settings.may_change_suite);
}

TEST_F(StandardUser, WhoAgreesLeavesTheProgramToTheOneThatStartsAgain) {
  elevation.answer = ElevationAnswer::kStarted;
  EXPECT_FALSE(Start());
  EXPECT_FALSE(instance_mark.is_held());
  EXPECT_FALSE(window.shown());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_EQ(com_server.offered, nullptr);
  EXPECT_EQ(active_objects.entry_count(), 0U);
  EXPECT_THAT(CallsOf({"ShowMessage", "fso.Create", "fso.Delete"}), IsEmpty());
}

TEST_F(StandardUser, WhoAgreesKeepsTheWorkingFolderOfTheOneThatStartsAgain) {
  files.AddFile("C:\\Ovalink\\Temp\\notes.zip", "PK");
  files.SetEverybodys("C:\\Ovalink\\Temp");
  elevation.answer = ElevationAnswer::kStarted;
  EXPECT_FALSE(Start());
  EXPECT_TRUE(files.IsFile("C:\\Ovalink\\Temp\\notes.zip"));
}

TEST_F(StandardUser, WhoDeclinesSeesWhatIsInstalledAndIsToldOnceWhyNothingCanBeChanged) {
  for (const ElevationAnswer answer : {ElevationAnswer::kDeclined}) {
    elevation.answer = answer;
    StartAndLoadPage();
    EXPECT_TRUE(instance_mark.is_held());
    EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
    EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(kNotice));
    window.Navigate("C:\\Ovalink\\Kitbay\\AddonUpdates.html");
    window.events()->WebBrowser1_DocumentComplete();
    EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(kNotice));
    EXPECT_EQ(elevation.questions, 1);
  }
}

TEST_F(StandardUser, WhoCannotBeAskedGoesOnLikeOneWhoDeclined) {
  elevation.answer = ElevationAnswer::kUnavailable;
  StartAndLoadPage();
  EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(kNotice));
}

TEST_F(StandardUser, IsToldAfterTheListsAreShown) {
  StartAndLoadPage();
  EXPECT_THAT(CallsOf({"ShowMessage", "Show", "ConnectDocument"}),
              ElementsAre("Show", "ConnectDocument", kNotice));
}

TEST_F(StandardUser, AsksNoUpdateSource) {
  StartAndLoadPage();
  EXPECT_THAT(suite_objects.Find(kDownload)->requests, IsEmpty());
  EXPECT_EQ(window.status_bar().PanelText(platform::kStatusPanel), "");
}

TEST_F(StandardUser, SeesTheOffersOfManifestsThatAreThere) {
  files.AddFile("C:\\Ovalink\\Kitbay\\list.xml",
                fakes::ManifestText(base::ComponentKind::kChannel,
                                    fakes::OfferText(base::ComponentKind::kChannel,
                                                     {.id = "music", .name = "Music"})));
  files.SetLastModified("C:\\Ovalink\\Kitbay\\list.xml", {2026, 1, 1, 0, 0, 0});
  StartAndLoadPage();
  EXPECT_EQ(At("updatedchannels")->ChildNodeCount(), 2);
  EXPECT_THAT(suite_objects.Find(kDownload)->requests, IsEmpty());
}

TEST_F(StandardUser, LeavesTheWorkingFolderOfAProgramWithMoreRights) {
  files.AddFile("C:\\Ovalink\\Temp\\notes.zip", "PK");
  files.SetEverybodys("C:\\Ovalink\\Temp");
  StartAndLoadPage();
  window.Unload();
  EXPECT_TRUE(files.IsFile("C:\\Ovalink\\Temp\\notes.zip"));
}

TEST_F(StandardUser, WhoStartedAnotherMeanwhileLeavesThePlaceToThat) {
  class BusyUser : public platform::Elevation {
   public:
    explicit BusyUser(fakes::FakeInstanceMark& mark) : mark_(mark) {}
    bool HasAdministratorRights() const override { return false; }
    ElevationAnswer StartWithAdministratorRights() override {
      EXPECT_FALSE(mark_.is_held());
      mark_.previous_instance = true;
      return ElevationAnswer::kDeclined;
    }

   private:
    fakes::FakeInstanceMark& mark_;
  } busy(instance_mark);
  SuiteRights rights({settings, files, desktop, busy, instance_mark, window});
  settings.InstallFolder = "C:\\Ovalink";
  ASSERT_FALSE(instance_mark.PreviousInstanceExists());
  window.Load(form);
  rights.Check();
  EXPECT_TRUE(window.message_loop().quit());
}

TEST_F(StandardUser, MayLackTheRightInOneFolderAlone) {
  for (const char* folder : {"Temp", "Kitbay", "addons", "Channels", "Datastore"}) {
    const std::string path = std::string("C:\\Ovalink\\") + folder;
    files.SetEverybodys("C:\\Ovalink");
    files.AddFolder(path);
    files.SetAdministrators(path);
    SuiteRights rights({settings, files, desktop, elevation, instance_mark, window});
    settings.InstallFolder = "C:\\Ovalink";
    rights.Check();
    EXPECT_FALSE(settings.may_change_suite) << folder;
    files.SetEverybodys(path);
    rights.Check();
    EXPECT_TRUE(settings.may_change_suite) << folder;
  }
}

/// Every button, after the user has declined.
class Buttons : public StandardUser {
 protected:
  Buttons() {
    StartAndLoadPage();
    page.sources.UpdateSources = {"updates.example/list.xml"};
    for (const char* container : {"installedaddons", "installedtransports", "installedchannels"}) {
      page.rows.FillEmptyDivHeader(container, "");
      page.rows.fillDivWithUpdates(container, "Mail", "1", "d", 6, false, false);
    }
    page.new_components.addon.push_back(
        {.id = "notes", .name = "Notes", .url = "p.example/notes.zip"});
    for (const char* container : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
      page.rows.FillEmptyDivHeader(container, "");
      page.rows.showUpdates(container, "Notes", "1", "d", 5);
    }
    suite_objects.Find(kDownload)->requests.clear();
    journal.Clear();
  }

  platform::HtmlNodeRef Button(const std::string& container, int button) const {
    return At(container)->Child(0)->Child(1)->Child(0)->Child(1)->Child(button);
  }

  void ExpectAnswer(const std::string& container, int button) {
    journal.Clear();
    const platform::HtmlNodeRef pressed = Button(container, button);
    ASSERT_NE(pressed, nullptr) << container;
    window.document()->Click(pressed);
    EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(kAnswer)) << container << button;
    EXPECT_FALSE(Button(container, button)->Disabled()) << container << button;
    EXPECT_THAT(suite_objects.Find(kDownload)->requests, IsEmpty());
  }
};

TEST_F(Buttons, InstallSaysSo) {
  for (const char* container : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
    ExpectAnswer(container, 0);
  }
}

TEST_F(Buttons, UpdateAndRemoveSaySo) {
  for (const char* container : {"installedaddons", "installedtransports", "installedchannels"}) {
    ExpectAnswer(container, 0);
    ExpectAnswer(container, 1);
  }
}

TEST_F(Buttons, TheDirectoriesCanBeEditedForTheyAreTheUsersOwn) {
  window.events()->cmdPreference_Click();
  preference_window.Type("www.example.org/mine.xml");
  preference_window.events()->cmdPrefOk_Click();
  window.events()->CmdClose_Click();
  EXPECT_THAT(*files.Bytes("C:\\Ana\\Ovalink\\updatepreference.xml"),
              HasSubstr("www.example.org/mine.xml"));
  EXPECT_THAT(CallsOf({"ShowMessage"}), IsEmpty());
}

TEST_F(Buttons, DirectoriesThatCannotBeSavedAreReported) {
  window.events()->cmdPreference_Click();
  preference_window.Type("www.example.org/mine.xml");
  preference_window.events()->cmdPrefOk_Click();
  files.SetUnwritable("C:\\Ana\\Ovalink");
  preference_window.events()->cmdPrefClose_Click();
  EXPECT_THAT(CallsOf({"ShowMessage"}),
              ElementsAre("ShowMessage [The list of directories could not be saved.] [Kitbay] 0"));
}

/// The same suite, with an administrator's rights.
class Administrator : public StandardUser {
 protected:
  Administrator() { RunAsAdministrator(); }
};

TEST_F(Administrator, IsNotAskedAndMayChangeEverything) {
  StartAndLoadPage();
  EXPECT_EQ(elevation.questions, 0);
  EXPECT_TRUE(settings.is_administrator);
  EXPECT_TRUE(settings.may_change_suite);
  EXPECT_EQ(Log(), Header());
  EXPECT_THAT(CallsOf({"ShowMessage"}), IsEmpty());
  EXPECT_EQ(suite_objects.Find(kDownload)->requests.size(), 1U);
}

TEST_F(Administrator, WhoMayNotWriteEitherIsToldButNotAsked) {
  files.SetUnwritable("C:\\Ovalink");
  StartAndLoadPage();
  EXPECT_EQ(elevation.questions, 0);
  EXPECT_THAT(
      CallsOf({"ShowMessage"}),
      ElementsAre("ShowMessage [You do not have permission to change files in C:\\Ovalink. Kitbay "
                  "shows what is installed, but it cannot ask the update sources, and it "
                  "cannot install, update or remove anything.\n\nAsk the person who "
                  "manages that folder.] [Kitbay] 0"));
}

/// A suite that everybody may change.
class OwnSuite : public FakeProgram {};

TEST_F(OwnSuite, NeedsNoOtherRights) {
  StartAndLoadPage();
  EXPECT_EQ(elevation.questions, 0);
  EXPECT_FALSE(settings.is_administrator);
  EXPECT_TRUE(settings.may_change_suite);
  EXPECT_THAT(CallsOf({"ShowMessage"}), IsEmpty());
}

TEST_F(OwnSuite, AnUnknownFolderIsNotTried) {
  keys.AddText(std::string(kUninstallKey) + "Tessel", "InstallLocation", "");
  files.SetUnwritable("C:");
  ASSERT_TRUE(Start());
  EXPECT_EQ(elevation.questions, 0);
  EXPECT_THAT(CallsOf({"RefusesFiles"}), IsEmpty());
}

}  // namespace
}  // namespace kitbay::app
