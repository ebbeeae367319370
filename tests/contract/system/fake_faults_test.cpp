#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contract/failure_number.h"
#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"
#include "fakes/recording_desktop.h"

// What tests can arrange on the fakes beyond what the contract with the real system covers.
namespace kitbay::fakes {
namespace {

using base::RuntimeError;
using contract::FailureNumber;
using testing::ElementsAre;

TEST(MemoryFiles, TheNthOperationFailsOnceAndDoesNothing) {
  MemoryFiles files;
  files.AddFile("C:\\a.txt", "old");
  files.FailAt(2, RuntimeError::kDiskFull);
  EXPECT_EQ(files.Read("C:\\a.txt"), "old");
  EXPECT_EQ(FailureNumber([&] { files.Replace("C:\\a.txt", "new"); }), 61);
  EXPECT_EQ(files.Bytes("C:\\a.txt"), "old");
  files.Replace("C:\\a.txt", "new");
  EXPECT_EQ(files.Bytes("C:\\a.txt"), "new");
}

TEST(MemoryFiles, OperationsOfBothInterfacesAreCountedAndRecorded) {
  MemoryFiles files;
  MemoryFileSystemObject object(files);
  object.CreateTextFile("\\log.txt", true)->WriteLine("x");
  files.Exists("C:/log.txt");
  EXPECT_EQ(files.operation_count(), 3U);
  EXPECT_THAT(files.operations(), ElementsAre("fso.CreateTextFile \\log.txt",
                                              "fso.WriteLine \\log.txt", "Exists C:/log.txt"));
}

TEST(MemoryFiles, WritesToOneFileFailFromNowOn) {
  MemoryFiles files;
  MemoryFileSystemObject object(files);
  const auto log = object.CreateTextFile("C:\\log.txt", true);
  log->WriteLine("before");
  files.FailWritesTo("c:\\LOG.txt", RuntimeError::kDiskFull);
  EXPECT_EQ(FailureNumber([&] { log->WriteLine("after"); }), 61);
  EXPECT_EQ(FailureNumber([&] { files.Create("C:\\log.txt", ""); }), 61);
  EXPECT_EQ(files.Bytes("C:\\log.txt"), "before\r\n");
}

TEST(MemoryFiles, NothingIsCreatedWrittenOrDeletedInAnUnwritableFolder) {
  MemoryFiles files;
  MemoryFileSystemObject object(files);
  files.AddFile("C:\\suite\\Temp\\a.txt", "old");
  files.SetUnwritable("C:\\suite");
  EXPECT_EQ(FailureNumber([&] { files.Create("C:\\suite\\b.txt", ""); }), 70);
  EXPECT_EQ(FailureNumber([&] { files.Replace("C:\\suite\\b.txt", ""); }), 70);
  EXPECT_EQ(FailureNumber([&] { files.CreateFolder("C:\\suite\\sub"); }), 70);
  EXPECT_EQ(FailureNumber([&] { object.CreateFolder("C:\\suite\\sub"); }), 70);
  EXPECT_EQ(FailureNumber([&] { object.CreateTextFile("C:\\suite\\l.txt", true); }), 70);
  EXPECT_EQ(FailureNumber([&] { object.DeleteFolder("C:\\suite\\Temp", true); }), 70);
  files.Create("C:\\suite\\Temp\\b.txt", "in the folder below");
  EXPECT_THAT(files.Names("C:\\suite"), ElementsAre("Temp"));
}

TEST(MemoryRegistry, AccessIsDeniedWhereATestSaysSo) {
  MemoryRegistry registry;
  registry.AddKey("HKEY_CURRENT_USER\\Software\\Ovalink");
  registry.DenyAccess("HKEY_CURRENT_USER\\software\\ovalink");
  EXPECT_EQ(registry.Open(platform::kCurrentUser, "Software\\Ovalink", 1).code,
            platform::kRegistryAccessDenied);
  EXPECT_EQ(registry.Create(platform::kCurrentUser, "Software\\Ovalink", 1).code,
            platform::kRegistryAccessDenied);
  EXPECT_EQ(registry.Open(platform::kCurrentUser, "Software", 1).code, 0);
}

TEST(MemoryRegistry, AStandardUserCreatesNoKeyOfTheMachine) {
  MemoryRegistry registry;
  for (const platform::RegistryKey hive : {platform::kLocalMachine, platform::kClassesRoot}) {
    EXPECT_EQ(registry.Create(hive, "new", platform::kKeyReadWrite).code,
              platform::kRegistryAccessDenied);
    EXPECT_EQ(registry.Open(hive, "new", platform::kKeyQueryValue).code,
              platform::kRegistryFileNotFound);
  }
  registry.SetUser(User::kAdministrator);
  EXPECT_EQ(registry.Create(platform::kClassesRoot, "new", platform::kKeyReadWrite).code, 0);
  EXPECT_TRUE(registry.HasKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\new"));
}

TEST(MemoryRegistry, TheUsersClassesComeBeforeTheMachines) {
  MemoryRegistry registry;
  registry.AddText("HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl", "", "machine");
  EXPECT_EQ(registry.Bytes("HKEY_CLASSES_ROOT\\ovl", ""), std::string("machine\0", 8));
  registry.AddText("HKEY_CURRENT_USER\\Software\\Classes\\ovl", "", "user");
  const auto opened = registry.Open(platform::kClassesRoot, "OVL", platform::kKeyReadWrite);
  EXPECT_EQ(registry.Query(opened.key, "", 100).bytes, std::string("user\0", 5));
  EXPECT_EQ(registry.SetText(opened.key, "", "new"), 0);
  EXPECT_EQ(registry.Bytes("HKEY_CURRENT_USER\\Software\\Classes\\ovl", ""), "new");
  EXPECT_EQ(registry.Bytes("HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl", ""),
            std::string("machine\0", 8));
}

TEST(MemoryRegistry, CallsAndOpenKeysAreRecorded) {
  MemoryRegistry registry;
  registry.SetUser(User::kAdministrator);
  const auto key = registry.Create(platform::kClassesRoot, "ovl", platform::kKeyReadWrite).key;
  registry.SetText(key, "", "x");
  registry.Query(key, "Name", 100);
  registry.Close(platform::kClassesRoot);
  EXPECT_THAT(registry.OpenKeys(), ElementsAre("HKEY_CLASSES_ROOT\\ovl"));
  registry.Close(key);
  registry.Close(key);
  EXPECT_THAT(
      registry.calls(),
      ElementsAre("Create HKEY_CLASSES_ROOT\\ovl 0x3f", "SetText HKEY_CLASSES_ROOT\\ovl [] 1 x",
                  "Query HKEY_CLASSES_ROOT\\ovl [Name] 100", "Close HKEY_CLASSES_ROOT",
                  "Close HKEY_CLASSES_ROOT\\ovl", "Close (invalid)"));
  EXPECT_THAT(registry.OpenKeys(), ElementsAre());
  EXPECT_EQ(registry.Bytes("HKEY_CLASSES_ROOT\\OVL", ""), "x");
}

TEST(RecordingDesktop, CallsAreRecordedInOrder) {
  RecordingDesktop desktop;
  desktop.SetWindowPos({5}, platform::kTopmost, platform::kNoSize | platform::kNoMove);
  desktop.ShowWindow({5}, platform::kRestore);
  desktop.SetActiveWindow({5});
  desktop.PassForegroundRight();
  desktop.CloseAllHelp();
  EXPECT_THAT(desktop.calls(),
              ElementsAre("SetWindowPos 5 -1 3", "ShowWindow 5 9", "SetActiveWindow 5",
                          "PassForegroundRight", "CloseAllHelp"));
}

TEST(RecordingDesktop, HelpAndProgramsFailWhereATestSaysSo) {
  RecordingDesktop desktop;
  desktop.DisplayHelpTopic("a.chm::/b.html");
  desktop.FailHelp(base::Failure(RuntimeError::kFileNotFound));
  desktop.FailStartProgram(base::Failure(RuntimeError::kPermissionDenied));
  EXPECT_EQ(FailureNumber([&] { desktop.DisplayHelpTopic("a.chm::/b.html"); }), 53);
  EXPECT_EQ(FailureNumber([&] { desktop.StartProgram("C:\\Tessel.exe"); }), 70);
}

}  // namespace
}  // namespace kitbay::fakes
