#include "app/installation_check.h"

#include "fake_program.h"
#include "fakes/recording_error_log.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A check by itself, with a log that keeps its entries.
class InstallationCheckTest : public FakeProgram {
 protected:
  InstallationCheckTest() { settings.MainAppName = "Application"; }

  void Check() { check_.CheckInstallation(&file_system_); }

  static std::string EntryOf(const std::string& key_name) { return kUninstallKey + key_name; }

  void PutInstallTxt(const std::string& bytes) {
    files.AddFile("C:\\Ovalink\\Kitbay\\install.txt", bytes);
  }

  std::vector<std::string> KeysOpened() { return CallsOf({"Open "}); }

  fakes::RecordingErrorLog entries_;
  fakes::MemoryFileSystemObject file_system_{files};
  InstallationCheck check_{entries_, desktop, keys, window, settings};
};

const std::string kTesselTried = std::string("Open ") + kUninstallKey + "Tessel 0x3f";
const std::string kTesselOpened = std::string("Open ") + kUninstallKey + "Tessel 0x1";

TEST_F(InstallationCheckTest, FillsTheSettingsFromTheUninstallEntry) {
  Check();
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
  EXPECT_EQ(settings.MainAppName, "Tessel Messenger");
  EXPECT_EQ(settings.MainAppExe, "TesselMain.exe");
  EXPECT_FALSE(settings.IsNotNT);
  EXPECT_THAT(entries_.entries, IsEmpty());
}

TEST_F(InstallationCheckTest, ReadsItsThreeValuesInOrderAndClosesTheKey) {
  Check();
  const std::string key = EntryOf("Tessel");
  EXPECT_THAT(
      journal.calls(),
      ElementsAre("PlatformId", "fso.FileExists C:\\Ovalink\\Kitbay\\install.txt",
                  "Open " + key + " 0x3f", "Open " + key + " 0x1",
                  "Query " + key + " [InstallLocation] 100", "Query " + key + " [Displayname] 100",
                  "Query " + key + " [ApplicationEXE] 100", "Close " + key));
  EXPECT_THAT(keys.OpenKeys(), IsEmpty());
}

TEST_F(InstallationCheckTest, OpensTheEntryOnceWhereTheUserMayWriteIt) {
  keys.SetUser(fakes::User::kAdministrator);
  Check();
  EXPECT_THAT(KeysOpened(), ElementsAre(kTesselTried));
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
}

TEST_F(InstallationCheckTest, AMissingEntryIsLookedForOnceInEachView) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  window.Load(form);
  journal.Clear();
  Check();
  const std::string entry = std::string("Open ") + kUninstallKey + "TesselPro ";
  EXPECT_THAT(KeysOpened(), ElementsAre(entry + "0x3f", entry + "0x23f"));
  EXPECT_EQ(CallsOf({"ShowMessage"}).size(), 1U);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(InstallationCheckTest, WithoutAReadableEntryTheMessageNamesApplicationTwice) {
  settings.program_folder = "C:\\Elsewhere";
  keys.DenyAccess(EntryOf("Tessel"));
  window.Load(form);
  journal.Clear();
  Check();
  EXPECT_THAT(journal.calls(),
              ElementsAre("PlatformId", "fso.FileExists C:\\Elsewhere\\install.txt", kTesselTried,
                          kTesselOpened,
                          "ShowMessage [Kitbay has detected that Application has not been "
                          "installed properly. Please reinstall Application.] [Kitbay] 0",
                          "Unload", "SetParent window", "SetVisible false", "RevokeActiveObject 0",
                          "DisconnectDocument", "CloseAllHelp", "Quit"));
  EXPECT_EQ(settings.InstallFolder, "");
  EXPECT_EQ(settings.MainAppName, "Application");
  EXPECT_THAT(entries_.entries, IsEmpty());
}

TEST_F(InstallationCheckTest, AnEntryOfTheOtherViewIsFound) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  keys.AddText(
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\"
      "Uninstall\\TesselPro",
      "InstallLocation", "D:\\Pro");
  Check();
  EXPECT_EQ(settings.InstallFolder, "D:\\Pro");
  const std::string opened = "Open " + EntryOf("TesselPro");
  EXPECT_THAT(KeysOpened(), ElementsAre(opened + " 0x3f", opened + " 0x23f", opened + " 0x201"));
}

TEST_F(InstallationCheckTest, AProgramOf32BitsLooksInTheViewOf64) {
  settings.program_bits = 32;
  PutInstallTxt("custom\r\nTesselPro\r\n");
  Check();
  const std::string opened = "Open " + EntryOf("TesselPro");
  EXPECT_THAT(KeysOpened(), ElementsAre(opened + " 0x3f", opened + " 0x13f"));
}

/// The start-up message for a suite of the other bitness.
std::string OtherBitness(const std::string& suite, const std::string& program) {
  return "ShowMessage [Tessel Messenger is a " + suite + "-bit program, but this is the " +
         program + "-bit Kitbay. It cannot register the libraries of components; the " + suite +
         "-bit Kitbay can. To get it, run Kitbay's installer again.] [Kitbay] 0";
}

TEST_F(InstallationCheckTest, ASuiteOfTheSameBitnessNeedsNoMessage) {
  desktop.AddProgram("C:\\Ovalink\\TesselMain.exe", 64);
  Check();
  check_.TellOtherBitness();
  EXPECT_THAT(CallsOf({"ShowMessage"}), IsEmpty());
}

TEST_F(InstallationCheckTest, AMainClientOfTheOtherBitnessIsReported) {
  desktop.AddProgram("C:\\Ovalink\\TesselMain.exe", 32);
  Check();
  check_.TellOtherBitness();
  EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(OtherBitness("32", "64")));
}

TEST_F(InstallationCheckTest, The32BitProgramReportsA64BitClient) {
  settings.program_bits = 32;
  desktop.AddProgram("C:\\Ovalink\\TesselMain.exe", 64);
  Check();
  check_.TellOtherBitness();
  EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(OtherBitness("64", "32")));
}

TEST_F(InstallationCheckTest, WithoutAReadableMainClientTheViewOfTheEntryCounts) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  const std::string entry =
      "HKEY_LOCAL_"
      "MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\TesselPro";
  keys.AddText(entry, "InstallLocation", "D:\\Pro");
  keys.AddText(entry, "Displayname", "Tessel Messenger");
  Check();
  check_.TellOtherBitness();
  EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(OtherBitness("32", "64")));
}

TEST_F(InstallationCheckTest, AnEntryInTheWrongViewDoesNotMatterIfTheMainClientFits) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  keys.AddText(
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\"
      "Uninstall\\TesselPro",
      "InstallLocation", "D:\\Pro");
  desktop.AddProgram("D:\\Pro\\Tessel.exe", 64);
  Check();
  check_.TellOtherBitness();
  EXPECT_THAT(CallsOf({"ShowMessage"}), IsEmpty());
}

TEST_F(InstallationCheckTest, AnotherPlatformThanNtIsRemembered) {
  desktop.SetPlatformId(1);
  Check();
  EXPECT_TRUE(settings.IsNotNT);
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
}

TEST_F(InstallationCheckTest, TheSecondLineOfInstallTxtNamesTheEntry) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  keys.AddText(EntryOf("TesselPro"), "InstallLocation", "D:\\Pro");
  Check();
  EXPECT_EQ(settings.InstallFolder, "D:\\Pro");
  EXPECT_EQ(settings.MainAppName, "TesselPro");
  EXPECT_EQ(settings.MainAppExe, "Tessel.exe");
}

TEST_F(InstallationCheckTest, TheLastLineOfInstallTxtNeedsNoEnd) {
  PutInstallTxt("custom\nTesselPro");
  keys.AddText(EntryOf("TesselPro"), "InstallLocation", "D:\\Pro");
  Check();
  EXPECT_EQ(settings.InstallFolder, "D:\\Pro");
}

TEST_F(InstallationCheckTest, InstallTxtWithOneLineEndsTheCheck) {
  PutInstallTxt("custom\r\n");
  window.Load(form);
  journal.Clear();
  Check();
  EXPECT_THAT(KeysOpened(), IsEmpty());
  EXPECT_THAT(CallsOf({"ShowMessage", "Unload"}), IsEmpty());
  EXPECT_EQ(settings.InstallFolder, "");
  EXPECT_EQ(settings.MainAppName, "Application");
  EXPECT_THAT(entries_.entries,
              ElementsAre(fakes::Entry("Kitbay::CheckInstallation", 62, "Input past end of file")));
}

TEST_F(InstallationCheckTest, AnEmptyInstallTxtEndsTheCheck) {
  PutInstallTxt("");
  Check();
  EXPECT_THAT(KeysOpened(), IsEmpty());
  EXPECT_THAT(entries_.entries,
              ElementsAre(fakes::Entry("Kitbay::CheckInstallation", 62, "Input past end of file")));
}

TEST_F(InstallationCheckTest, ABlankFirstLineOfInstallTxtLeavesTheUsualEntry) {
  PutInstallTxt("  \r\nTesselPro\r\n");
  Check();
  EXPECT_THAT(KeysOpened(), ElementsAre(kTesselTried, kTesselOpened));
}

TEST_F(InstallationCheckTest, TheFirstLineOfInstallTxtOnlyDecidesWhetherTheFileIsUsed) {
  PutInstallTxt("TesselPro\r\nTessel\r\n");
  Check();
  EXPECT_THAT(KeysOpened(), ElementsAre(kTesselTried, kTesselOpened));
}

TEST_F(InstallationCheckTest, WithoutInstallTxtTheEntryIsTheUsualOne) {
  Check();
  EXPECT_THAT(KeysOpened(), ElementsAre(kTesselTried, kTesselOpened));
}

TEST_F(InstallationCheckTest, WithoutAFileSystemObjectInstallTxtIsNotLookedFor) {
  PutInstallTxt("custom\r\nTesselPro\r\n");
  check_.CheckInstallation(nullptr);
  EXPECT_THAT(KeysOpened(), ElementsAre(kTesselTried, kTesselOpened));
  EXPECT_EQ(settings.InstallFolder, "C:\\Ovalink");
}

TEST_F(InstallationCheckTest, ValuesUpToAHundredBytesFit) {
  const std::string key = EntryOf("Tessel");
  keys.AddText(key, "InstallLocation", std::string(98, 'a'));
  keys.AddText(key, "Displayname", std::string(99, 'b'));
  Check();
  EXPECT_EQ(keys.Bytes(key, "InstallLocation")->size(), 99U);
  EXPECT_EQ(keys.Bytes(key, "Displayname")->size(), 100U);
  EXPECT_EQ(settings.InstallFolder, std::string(98, 'a'));
  EXPECT_EQ(settings.MainAppName, std::string(99, 'b'));
}

TEST_F(InstallationCheckTest, LongerValuesDoNotFit) {
  const std::string key = EntryOf("Tessel");
  keys.AddText(key, "InstallLocation", std::string(299, 'a'));
  keys.AddText(key, "Displayname", std::string(100, 'b'));
  keys.AddText(key, "ApplicationEXE", std::string(299, 'c'));
  Check();
  EXPECT_EQ(settings.InstallFolder, "");
  EXPECT_EQ(settings.MainAppName, "Tessel");
  EXPECT_EQ(settings.MainAppExe, "Tessel.exe");
  EXPECT_THAT(entries_.entries, IsEmpty());
}

TEST_F(InstallationCheckTest, AMissingDisplaynameIsTheKeysName) {
  const std::string key = EntryOf("Second");
  PutInstallTxt("x\r\nSecond\r\n");
  keys.AddText(key, "InstallLocation", "C:\\Ovalink");
  keys.AddText(key, "ApplicationEXE", "Other.exe");
  Check();
  EXPECT_EQ(settings.MainAppName, "Second");
  EXPECT_EQ(settings.MainAppExe, "Other.exe");
}

TEST_F(InstallationCheckTest, AMissingApplicationExeIsTheUsualOne) {
  const std::string key = EntryOf("Second");
  PutInstallTxt("x\r\nSecond\r\n");
  keys.AddText(key, "Displayname", "Second Client");
  Check();
  EXPECT_EQ(settings.MainAppName, "Second Client");
  EXPECT_EQ(settings.MainAppExe, "Tessel.exe");
  EXPECT_EQ(settings.InstallFolder, "");
}

TEST_F(InstallationCheckTest, AnEmptyNameThatCouldBeReadStaysEmpty) {
  keys.AddText(EntryOf("Tessel"), "Displayname", "");
  keys.AddText(EntryOf("Tessel"), "ApplicationEXE", "");
  Check();
  EXPECT_EQ(settings.MainAppName, "");
  EXPECT_EQ(settings.MainAppExe, "");
}

TEST_F(InstallationCheckTest, ValuesThatAreNoTextCountAsMissing) {
  const std::string key = EntryOf("Tessel");
  keys.AddValue(key, "InstallLocation", "abcd", fakes::kBinaryType);
  keys.AddValue(key, "Displayname", std::string("\1\0\0\0", 4), fakes::kNumberType);
  keys.AddValue(key, "ApplicationEXE", std::string("\1\0\0\0", 4), fakes::kNumberType);
  Check();
  EXPECT_EQ(settings.InstallFolder, "");
  EXPECT_EQ(settings.MainAppName, "Tessel");
  EXPECT_EQ(settings.MainAppExe, "Tessel.exe");
}

TEST_F(InstallationCheckTest, AValueLosesItsLastByteAlsoWithoutATerminator) {
  keys.AddValue(EntryOf("Tessel"), "InstallLocation", "C:\\Suite", fakes::kTextType);
  keys.AddValue(EntryOf("Tessel"), "Displayname", "", fakes::kTextType);
  Check();
  EXPECT_EQ(settings.InstallFolder, "C:\\Suit");
  EXPECT_EQ(settings.MainAppName, "");
}

}  // namespace
}  // namespace kitbay::app
