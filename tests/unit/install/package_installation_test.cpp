// From the downloaded package to the entered component.
#include "installation_fixture.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr base::PerKind<const char*> kKindNames = {
    .addon = "Addon", .transport = "Transport", .channel = "Channel"};

class Installation : public InstallationTest {
 protected:
  Installation() {
    window_.status_bar().SetPanelText(platform::kStatusPanel, "Downloading Notes.");
    window_.progress_bar().SetVisible(true);
  }
};

class InstallationOfEachKind : public Installation,
                               public ::testing::WithParamInterface<ComponentKind> {
 protected:
  /// The folder into which the package of "notes" is expanded.
  static std::string Folder() {
    constexpr base::PerKind<const char*> kFolders = {
        .addon = "C:\\Ovalink\\addons\\notes",
        .transport = "C:\\Ovalink",
        .channel = "C:\\Ana\\CustomData\\channels\\notes"};
    return kFolders[GetParam()];
  }

  /// The registry file in which the component is entered.
  std::string RegistryFile() const {
    return File(GetParam() == ComponentKind::kChannel ? kCustomRegistry : kDatastore);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, InstallationOfEachKind, ::testing::ValuesIn(base::kComponentKinds),
                         [](const auto& info) { return kKindNames[info.param]; });

TEST_P(InstallationOfEachKind, ExpandsEntersAndTellsTheUser) {
  constexpr base::PerKind<const char*> kNames = {
      .addon = "Notes addon", .transport = "Notes messaging service", .channel = "Notes Channel"};
  constexpr base::PerKind<const char*> kEntries = {
      .addon = "<addon id=\"notes\" name=\"Notes\"",
      .transport = "<transport id=\"notes\" name=\"Notes\"",
      .channel = "<channel id=\"notes\" name=\"Notes\""};
  AddNew(GetParam(), "Notes", 3);
  AddLibrary(Folder() + "\\own.dll");
  AddLibrary(Folder() + "\\notes.dll");
  Install(GetParam());
  EXPECT_EQ(File(Folder() + "\\own.dll"), "MZ own");
  EXPECT_EQ(File(Folder() + "\\data\\notes.txt"), "one");
  EXPECT_THAT(RegistryFile(), HasSubstr(kEntries[GetParam()]));
  EXPECT_THAT(Messages(), ElementsAre(std::string(kNames[GetParam()]) +
                                      " has been successfully installed. Please restart Tessel "
                                      "Messenger to view the new feature."));
  EXPECT_EQ(RowCount(view::kUpdatedContainers[GetParam()]), 0);
  EXPECT_TRUE(StatusIsClear());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(InstallationOfEachKind, AMissingDownloadIsReportedAndNothingIsCreated) {
  constexpr base::PerKind<const char*> kProcedures = {
      .addon = "Kitbay::Unpack", .transport = "Kitbay::Unpack", .channel = "Kitbay::UnpackChannel"};
  file_system_.DeleteFolder("C:\\Ovalink\\Temp", true);
  desktop_.while_asking = [&] { EXPECT_TRUE(StatusIsClear()); };
  Install(GetParam());
  EXPECT_THAT(Messages(), ElementsAre("The Archive Folder notes.zip Not Found. Try again"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry(kProcedures[GetParam()], 0, "Archive folder not found")));
  EXPECT_TRUE(StatusIsClear());
  EXPECT_THAT(Operations({"Create", "fso.Create", "Replace"}), IsEmpty());
  EXPECT_EQ(settings_.InstallFolder, "C:\\Ovalink");
}

TEST_P(InstallationOfEachKind, ACorruptArchiveIsReportedAndNothingIsEntered) {
  constexpr base::PerKind<const char*> kProcedures = {.addon = "Kitbay::UnPack",
                                                      .transport = "Kitbay::UnPackTransport",
                                                      .channel = "Kitbay::UnPackChannel"};
  constexpr base::PerKind<const char*> kTexts = {
      .addon = "Download of notes.zip is corrupt . Try again",
      .transport = "Download of notes.zip is corrupt . Try again",
      .channel = "Download of notes.zip is corrupt .Try again"};
  files_.AddFile("C:\\Ovalink\\Temp\\notes.zip", "no archive");
  desktop_.while_asking = [&] { EXPECT_FALSE(StatusIsClear()); };
  Install(GetParam());
  EXPECT_THAT(Messages(), ElementsAre(kTexts[GetParam()]));
  EXPECT_THAT(
      log_.entries,
      ElementsAre(Entry("Kitbay...ExpandZipFile", 0, "Source file is currept"),
                  Entry(kProcedures[GetParam()], 0, "There was an error creating the archive.")));
  EXPECT_TRUE(StatusIsClear());
  EXPECT_EQ(File(kDatastore), kEmptyRegistry);
  EXPECT_EQ(File(kCustomRegistry), "(none)");
  EXPECT_THAT(Loaded(), IsEmpty());
}

TEST_P(InstallationOfEachKind, ARegistryFileThatCannotBeWrittenClearsTheStatusBar) {
  const std::string path = GetParam() == ComponentKind::kChannel ? kCustomRegistry : kDatastore;
  files_.AddFile(path, kEmptyRegistry);
  files_.FailWritesTo(path, base::RuntimeError::kDiskFull);
  AddLibrary(Folder() + "\\own.dll");
  AddLibrary(Folder() + "\\notes.dll");
  Install(GetParam());
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].number, 61);
  EXPECT_EQ(RegistryFile(), kEmptyRegistry);
  EXPECT_TRUE(StatusIsClear());
}

TEST_P(InstallationOfEachKind, AFileThatCouldNotBeWrittenIsReportedBeforeTheRest) {
  files_.AddFile(Folder() + "\\data\\notes.txt", "old");
  files_.SetInUse(Folder() + "\\data\\notes.txt");
  AddLibrary(Folder() + "\\own.dll");
  AddLibrary(Folder() + "\\notes.dll");
  Install(GetParam());
  EXPECT_THAT(Messages(),
              ElementsAre("These files of notes could not be written, because they are in use or "
                          "must not be changed:\r\n\r\ndata\\notes.txt\r\n\r\nClose the programs "
                          "that use them and try again.",
                          HasSubstr(" has been successfully installed.")));
}

TEST_P(InstallationOfEachKind, AComponentThatNoManifestListsIsNotRegisteredOrEntered) {
  constexpr base::PerKind<const char*> kProcedures = {.addon = "Kitbay::enterAddon",
                                                      .transport = "Kitbay::enterTransport",
                                                      .channel = "Kitbay::enterChannel"};
  Offer("other");
  Install(GetParam());
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, kProcedures[GetParam()]);
  EXPECT_EQ(File(kDatastore), kEmptyRegistry);
  EXPECT_EQ(File(kCustomRegistry), "(none)");
  EXPECT_THAT(Loaded(), IsEmpty());
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_TRUE(StatusIsClear());
}

TEST_P(InstallationOfEachKind, ALibraryThatCannotBeLoadedDoesNotKeepTheComponentOut) {
  Install(GetParam());
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, " Kitbay::Loading of library failed");
  EXPECT_THAT(RegistryFile(), HasSubstr("id=\"notes\""));
  EXPECT_EQ(Messages().size(), 1U);
}

TEST_P(InstallationOfEachKind, TheClientIsStartedAgainExactlyOnce) {
  Offer("notes", "");
  session_.restart = true;
  Install(GetParam());
  EXPECT_FALSE(session_.restart);
  Install(GetParam());
  const std::string folder =
      GetParam() == ComponentKind::kTransport ? "C:\\Ovalink\\" : "C:\\Ovalink";
  ASSERT_GE(desktop_.calls().size(), 2U);
  EXPECT_THAT(desktop_.calls()[0], HasSubstr("successfully installed"));
  EXPECT_EQ(desktop_.calls()[1], "StartProgram [" + folder + "\\Tessel.exe]");
  EXPECT_EQ(std::count(desktop_.calls().begin(), desktop_.calls().end(), desktop_.calls()[1]), 1);
}

TEST_P(InstallationOfEachKind, WithoutARestartFlagTheClientIsNotStarted) {
  Install(GetParam());
  EXPECT_EQ(desktop_.calls().size(), 1U);
}

TEST_P(InstallationOfEachKind, AClosedClientIsStartedAgainEvenIfNothingWasEntered) {
  Offer("other");
  session_.restart = true;
  Install(GetParam());
  EXPECT_FALSE(session_.restart);
  EXPECT_THAT(desktop_.calls(), ElementsAre(HasSubstr("StartProgram")));
}

TEST_P(InstallationOfEachKind, APackageThatCannotBeUnpackedLeavesTheRestartFlag) {
  session_.restart = true;
  files_.AddFile("C:\\Ovalink\\Temp\\notes.zip", "no archive");
  Install(GetParam());
  file_system_.DeleteFolder("C:\\Ovalink\\Temp", true);
  Install(GetParam());
  EXPECT_TRUE(session_.restart);
  EXPECT_THAT(desktop_.calls(), ElementsAre(HasSubstr("is corrupt"), HasSubstr("Not Found")));
}

TEST_P(InstallationOfEachKind, EndsAnUpdateWhateverItsOutcome) {
  state_.update_in_progress = true;
  desktop_.while_asking = [&] { EXPECT_TRUE(state_.update_in_progress); };
  Install(GetParam());
  EXPECT_FALSE(state_.update_in_progress);
  for (const char* archive : {"no archive", ""}) {
    state_.update_in_progress = true;
    files_.AddFile("C:\\Ovalink\\Temp\\notes.zip", archive);
    Install(GetParam());
    EXPECT_FALSE(state_.update_in_progress);
  }
}

TEST_P(InstallationOfEachKind, AnUpdateChangesTheRowThatAskedForIt) {
  constexpr base::PerKind<const char*> kVersions = {
      .addon = "Version 0", .transport = "Version 2.0", .channel = "Version 2.0"};
  Install(GetParam());
  AddInstalled(GetParam(), "Mail", 1);
  AddInstalled(GetParam(), "Notes", 3);
  state_.update_in_progress = true;
  state_.current_row_id = "1";
  Install(GetParam());
  const char* container = view::kInstalledContainers[GetParam()];
  EXPECT_EQ(Row(container, 0)->Child(0)->Child(1)->InnerText(), "Version 1.0.0.0");
  EXPECT_EQ(Row(container, 1)->Child(0)->Child(1)->InnerText(), kVersions[GetParam()]);
  EXPECT_EQ(Button(container, 1, 0)->Value(), "Remove");
  EXPECT_EQ(Messages().size(), 1U);
}

// The row's number is the one from the click; the lists count from 1 each time.
TEST_P(InstallationOfEachKind, OfAListFilledAgainMeanwhileTheComponentsOwnRowGoes) {
  const char* container = view::kUpdatedContainers[GetParam()];
  Offer("notes", "");
  AddNew(GetParam(), "Notes", 1);
  AddNew(GetParam(), "Mail", 3);
  Install(GetParam());
  ASSERT_EQ(RowCount(container), 1);
  EXPECT_EQ(Row(container)->Child(0)->Child(0)->InnerText(), "Mail");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(InstallationOfEachKind, OfAListFilledAgainDuringTheMessageNoOtherRowGoes) {
  const char* container = view::kUpdatedContainers[GetParam()];
  Offer("notes", "");
  AddNew(GetParam(), "Notes", 3);
  desktop_.while_asking = [&] {
    rows_.FillEmptyDivHeader(container, "");
    AddNew(GetParam(), "Mail", 3);
  };
  Install(GetParam());
  ASSERT_EQ(RowCount(container), 1);
  EXPECT_EQ(Row(container)->Child(0)->Child(0)->InnerText(), "Mail");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(InstallationOfEachKind, OfAListFilledAgainMeanwhileTheUpdateChangesTheComponentsOwnRow) {
  constexpr base::PerKind<const char*> kVersions = {
      .addon = "Version 0", .transport = "Version 2.0", .channel = "Version 2.0"};
  const char* container = view::kInstalledContainers[GetParam()];
  Install(GetParam());
  AddInstalled(GetParam(), "Notes", 2);
  AddInstalled(GetParam(), "Mail", 3);
  state_.update_in_progress = true;
  Install(GetParam());
  EXPECT_EQ(Row(container, 0)->Child(0)->Child(1)->InnerText(), kVersions[GetParam()]);
  EXPECT_EQ(Row(container, 1)->Child(0)->Child(1)->InnerText(), "Version 1.0.0.0");
  EXPECT_EQ(Row(container, 1)->Child(1)->Child(0)->Child(1)->ChildCount(), 2);
}

TEST_P(InstallationOfEachKind, TwoFurtherLibrariesAreRegisteredFromTheList) {
  constexpr base::PerKind<const char*> kFolders = {
      .addon = "C:\\Ovalink\\addons\\notes\\",
      .transport = "C:\\Ovalink\\notes\\",
      .channel = "C:\\Ana\\CustomData\\channels\\notes\\"};
  const std::string folder = kFolders[GetParam()];
  Offer("notes", "one.dll,two.dll");
  AddLibrary(folder + "one.dll");
  AddLibrary(folder + "two.dll");
  Install(GetParam());
  EXPECT_THAT(Loaded(), ElementsAre("[" + folder + "one.dll]", "[" + folder + "two.dll]"));
  EXPECT_THAT(RegistryFile(), HasSubstr("id=\"notes\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(InstallationOfEachKind, WithoutFurtherLibrariesNoneIsRegistered) {
  Offer("notes", "");
  Install(GetParam());
  EXPECT_THAT(Loaded(), IsEmpty());
  EXPECT_THAT(RegistryFile(), HasSubstr("id=\"notes\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, WithOneFurtherLibraryTheOwnOneIsRegistered) {
  AddLibrary("C:\\Ovalink\\addons\\notes\\own.dll");
  Install(ComponentKind::kAddon);
  AddLibrary("C:\\Ana\\CustomData\\channels\\notes\\own.dll");
  Install(ComponentKind::kChannel);
  AddLibrary("C:\\Ovalink\\notes.dll");
  Install(ComponentKind::kTransport);
  EXPECT_THAT(Loaded(), ElementsAre("[C:\\Ovalink\\addons\\notes\\own.dll]",
                                    "[C:\\Ana\\CustomData\\channels\\notes\\own.dll]",
                                    "[C:\\Ovalink\\notes.dll]"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, AChannelWithoutALibraryIsEnteredWithoutRegistration) {
  Offer("notes", "notes.dll", "");
  Install(ComponentKind::kChannel);
  EXPECT_THAT(libraries_.calls(), IsEmpty());
  EXPECT_THAT(File(kCustomRegistry), HasSubstr("id=\"notes\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, AnAddonsFolderIsCreatedInOneStep) {
  Offer("notes", "");
  Install(ComponentKind::kAddon);
  EXPECT_EQ(Operations({"CreateFolder"}).front(), "CreateFolder C:\\Ovalink\\addons\\notes");
  EXPECT_THAT(Operations({"fso."}), IsEmpty());
}

TEST_F(Installation, AnAddonsFolderThatIsThereIsUsed) {
  files_.AddFile("C:\\Ovalink\\addons\\notes\\mine.txt", "kept");
  Offer("notes", "");
  Install(ComponentKind::kAddon);
  EXPECT_EQ(File("C:\\Ovalink\\addons\\notes\\mine.txt"), "kept");
  EXPECT_EQ(File("C:\\Ovalink\\addons\\notes\\own.dll"), "MZ own");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, WithoutTheFolderOfAddonsAnAddonIsNotInstalled) {
  file_system_.DeleteFolder("C:\\Ovalink\\addons", true);
  Install(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Unpack", 76, "Path not found")));
  EXPECT_EQ(File(kDatastore), kEmptyRegistry);
  EXPECT_TRUE(StatusIsClear());
}

TEST_F(Installation, TheFolderOfACorruptAddonStaysEmpty) {
  files_.AddFile("C:\\Ovalink\\Temp\\notes.zip", "no archive");
  Install(ComponentKind::kAddon);
  EXPECT_TRUE(files_.IsFolder("C:\\Ovalink\\addons\\notes"));
  EXPECT_THAT(files_.Names("C:\\Ovalink\\addons\\notes"), IsEmpty());
}

TEST_F(Installation, ATransportLeavesTheSuiteFolderEndingInASeparator) {
  Offer("notes", "");
  Install(ComponentKind::kTransport);
  EXPECT_EQ(settings_.InstallFolder, "C:\\Ovalink\\");
  Install(ComponentKind::kTransport);
  EXPECT_EQ(settings_.InstallFolder, "C:\\Ovalink\\");
  EXPECT_THAT(Operations({"CreateFolder"}), ElementsAre("CreateFolder C:\\Ovalink\\data"));
}

TEST_F(Installation, AfterATransportAnAddonStillFindsItsPlace) {
  Offer("notes", "");
  Install(ComponentKind::kTransport);
  Install(ComponentKind::kAddon);
  EXPECT_EQ(File("C:\\Ovalink\\addons\\notes\\own.dll"), "MZ own");
  EXPECT_THAT(File(kDatastore),
              AllOf(HasSubstr("<transport id=\"notes\""), HasSubstr("<addon id=\"notes\"")));
  EXPECT_THAT(log_.entries, IsEmpty());
}

struct ChannelCase {
  const char* id;
  const char* folder;
  const char* registry;
};

class ChannelPlace : public Installation, public ::testing::WithParamInterface<ChannelCase> {};

INSTANTIATE_TEST_SUITE_P(
    Ids, ChannelPlace,
    ::testing::Values(
        ChannelCase{"presence", "C:\\Ovalink\\channels\\presence", kDatastore},
        ChannelCase{"Presence", "C:\\Ovalink\\channels\\Presence", kDatastore},
        ChannelCase{"presence2", "C:\\Ana\\CustomData\\channels\\presence2", kCustomRegistry},
        ChannelCase{"notes", "C:\\Ana\\CustomData\\channels\\notes", kCustomRegistry}),
    [](const auto& info) { return info.param.id; });

TEST_P(ChannelPlace, FollowsFromItsId) {
  Offer(GetParam().id, "");
  AddPackage(GetParam().id);
  Install(ComponentKind::kChannel, GetParam().id);
  EXPECT_EQ(File(std::string(GetParam().folder) + "\\own.dll"), "MZ own");
  EXPECT_THAT(File(GetParam().registry),
              HasSubstr(std::string("<channel id=\"") + GetParam().id + "\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, WithoutAFolderOfChannelsTheUsersFolderIsCreatedFirst) {
  file_system_.DeleteFolder("C:\\Ana\\CustomData", true);
  const std::size_t before = Operations({"fso."}).size();
  Offer("notes", "");
  Install(ComponentKind::kChannel);
  auto operations = Operations({"fso."});
  operations.erase(operations.begin(), operations.begin() + static_cast<std::ptrdiff_t>(before));
  EXPECT_THAT(operations, ElementsAre("fso.FolderExists C:\\Ana\\CustomData\\channels",
                                      "fso.CreateFolder C:\\Ana\\CustomData",
                                      "fso.CreateFolder C:\\Ana\\CustomData\\channels",
                                      "fso.FolderExists C:\\Ana\\CustomData\\channels\\notes",
                                      "fso.CreateFolder C:\\Ana\\CustomData\\channels\\notes"));
  EXPECT_THAT(File(kCustomRegistry), HasSubstr("id=\"notes\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, AUsersFolderWithoutAFolderOfChannelsEndsTheInstallation) {
  file_system_.DeleteFolder("C:\\Ana\\CustomData\\channels", true);
  Install(ComponentKind::kChannel);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UnpackChannel", 58, "File already exists")));
  EXPECT_FALSE(files_.IsFolder("C:\\Ana\\CustomData\\channels"));
  EXPECT_EQ(File(kCustomRegistry), "(none)");
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_TRUE(StatusIsClear());
}

TEST_F(Installation, ThePresenceChannelGetsTheSuitesFolderOfChannels) {
  file_system_.DeleteFolder("C:\\Ovalink\\channels", true);
  const std::size_t before = Operations({"fso."}).size();
  Offer("presence", "");
  AddPackage("presence");
  Install(ComponentKind::kChannel, "presence");
  auto operations = Operations({"fso."});
  operations.erase(operations.begin(), operations.begin() + static_cast<std::ptrdiff_t>(before));
  EXPECT_THAT(operations, ElementsAre("fso.FolderExists C:\\Ovalink\\channels",
                                      "fso.CreateFolder C:\\Ovalink\\channels",
                                      "fso.FolderExists C:\\Ovalink\\channels\\presence",
                                      "fso.CreateFolder C:\\Ovalink\\channels\\presence"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, AChannelNeedsTheFileSystemObject) {
  session_.file_system = nullptr;
  Install(ComponentKind::kChannel);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UnpackChannel", 91, kNotSet)));
}

TEST_F(Installation, APackageThatArrivesWhileTheUserReadsAMessageWaitsForItsTurn) {
  Offer("notes", "");
  AddNew(ComponentKind::kAddon, "Notes", 3);
  AddNew(ComponentKind::kChannel, "Notes", 9);
  desktop_.while_asking = [&] {
    desktop_.while_asking = nullptr;
    installation_.UnpackChannel(
        {.file_path = "c.zip", .name = "notes", .row_id = "9", .row_name = "Notes"},
        "C:\\Ovalink\\Temp\\notes.zip");
    EXPECT_EQ(File(kCustomRegistry), "(none)");
  };
  Install(ComponentKind::kAddon);
  EXPECT_THAT(Messages(),
              ElementsAre(HasSubstr("Notes addon has"), HasSubstr("Notes Channel has")));
  EXPECT_EQ(RowCount("updatedaddons"), 0);
  EXPECT_EQ(RowCount("updatedchannels"), 0);
  EXPECT_THAT(File(kCustomRegistry), HasSubstr("id=\"notes\""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Installation, InstallProcessGivesTheButtonsBack) {
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  AddNew(ComponentKind::kChannel, "News", 1);
  buttons_.DisableOtherDownload();
  buttons_.DisableOtherUpdatedDownload();
  ASSERT_TRUE(Button("updatedchannels", 0, 0)->Disabled());
  installation_.InstallProcess();
  EXPECT_FALSE(Button("updatedchannels", 0, 0)->Disabled());
  EXPECT_FALSE(Button("installedaddons", 0, kUpdate)->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::install
