#include "install/registry.h"

#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>

#include "fakes/memory_registry.h"
#include "fakes/recording_error_log.h"

namespace kitbay::install {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSuiteKey = "HKEY_CURRENT_USER\\software\\Ovalink";
constexpr const char* kFolders =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

class RegistryAccess : public testing::Test {
 protected:
  RegistryAccess() {
    settings_.program_folder = "C:\\Program Files\\Kitbay";
    settings_.program_name = "Kitbay";
    keys_.SetUser(fakes::User::kAdministrator);
  }

  Registry& Make() { return registry_.emplace(log_, keys_, settings_); }

  /// What `Step` calls on the registry after a `Registry` object was created for an existing key.
  template <typename Step>
  std::vector<std::string> CallsOf(Step step) {
    keys_.AddKey(kSuiteKey);
    Registry& registry = Make();
    const auto before = static_cast<std::ptrdiff_t>(keys_.calls().size());
    step(registry);
    return {keys_.calls().begin() + before, keys_.calls().end()};
  }

  fakes::RecordingErrorLog log_;
  fakes::MemoryRegistry keys_;
  base::Settings settings_;
  std::optional<Registry> registry_;
};

TEST_F(RegistryAccess, ObjectOpensTheSuitesKeyAndClosesItAtItsEnd) {
  keys_.AddKey(kSuiteKey);
  Make();
  EXPECT_THAT(keys_.calls(), ElementsAre("Open HKEY_CURRENT_USER\\software\\Ovalink 0x3f"));
  EXPECT_THAT(keys_.OpenKeys(), ElementsAre(kSuiteKey));
  registry_.reset();
  EXPECT_EQ(keys_.calls().back(), "Close HKEY_CURRENT_USER\\software\\Ovalink");
  EXPECT_THAT(keys_.OpenKeys(), IsEmpty());
}

TEST_F(RegistryAccess, MissingSuiteKeyIsCreatedByMakingAnObject) {
  Make();
  EXPECT_THAT(keys_.calls(),
              ElementsAre("Open HKEY_CURRENT_USER\\software\\Ovalink 0x3f",
                          "Create HKEY_CURRENT_USER\\software\\Ovalink 0x3f",
                          "SetText HKEY_CURRENT_USER\\software\\Ovalink [] 7 Ovalink"));
  EXPECT_EQ(keys_.Bytes(kSuiteKey, ""), "Ovalink");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, ExistingSuiteKeyKeepsItsDefaultValue) {
  keys_.AddText(kSuiteKey, "", "Other");
  Make();
  EXPECT_EQ(keys_.Bytes(kSuiteKey, ""), std::string("Other\0", 6));
}

TEST_F(RegistryAccess, RootKeyIsTheHandleOfTheSuitesKey) {
  EXPECT_EQ(Make().ROOT_REGISTRY_KEY(), 0x100);
  keys_.SetText(platform::RegistryKey{0x100}, "Mark", "x");
  EXPECT_EQ(keys_.Bytes(kSuiteKey, "Mark"), "x");
}

TEST_F(RegistryAccess, RootKeyIsZeroWhenTheSuitesKeyIsDenied) {
  keys_.DenyAccess(kSuiteKey);
  EXPECT_EQ(Make().ROOT_REGISTRY_KEY(), 0);
  EXPECT_THAT(keys_.calls(), ElementsAre("Open HKEY_CURRENT_USER\\software\\Ovalink 0x3f",
                                         "Create HKEY_CURRENT_USER\\software\\Ovalink 0x3f"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, ApplicationDataFolderIsAskedForItsSizeFirst) {
  keys_.AddText(kFolders, "AppData", "C:\\Users\\Ada\\AppData\\Roaming");
  const std::string key = kFolders;
  std::string path;
  EXPECT_THAT(CallsOf([&](Registry& registry) { path = registry.GetAppDataPath(); }),
              ElementsAre("Open " + key + " 0x1", "Query " + key + " [AppData] 0",
                          "Query " + key + " [AppData] 29", "Close " + key));
  EXPECT_EQ(path, "C:\\Users\\Ada\\AppData\\Roaming");
  EXPECT_THAT(keys_.OpenKeys(), ElementsAre(kSuiteKey));
}

TEST_F(RegistryAccess, ApplicationDataFolderIsTrimmedOfBlanks) {
  keys_.AddText(kFolders, "AppData", "  C:\\My Data ");
  EXPECT_EQ(Make().GetAppDataPath(), "C:\\My Data");
}

TEST_F(RegistryAccess, ApplicationDataFolderMayBeLong) {
  for (const std::size_t length : {98U, 99U, 100U, 299U, 300U}) {
    const std::string folder(length, 'd');
    keys_.AddText(kFolders, "AppData", folder);
    EXPECT_EQ(Make().GetAppDataPath(), folder);
  }
}

TEST_F(RegistryAccess, ApplicationDataFolderKeepsItsOtherLetters) {
  keys_.AddText(kFolders, "AppData", "C:\\Users\\J\u00FCrgen");
  EXPECT_EQ(Make().GetAppDataPath(), "C:\\Users\\J\u00FCrgen");
}

TEST_F(RegistryAccess, ApplicationDataLosesItsLastByteWhateverThatIs) {
  keys_.AddValue(kFolders, "AppData", "C:\\Data", fakes::kTextType);
  EXPECT_EQ(Make().GetAppDataPath(), "C:\\Dat");
}

TEST_F(RegistryAccess, ApplicationDataThatIsMissingIsEmpty) {
  EXPECT_EQ(Make().GetAppDataPath(), "");
  keys_.AddKey(kFolders);
  EXPECT_EQ(Make().GetAppDataPath(), "");
  keys_.AddValue(kFolders, "AppData", "", fakes::kTextType);
  EXPECT_EQ(Make().GetAppDataPath(), "");
  keys_.AddValue(kFolders, "AppData", "four", fakes::kNumberType);
  EXPECT_EQ(Make().GetAppDataPath(), "");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, ProtocolIsRegisteredInTheDocumentedOrder) {
  EXPECT_THAT(
      CallsOf([](Registry& registry) { registry.RegisterUrlHandler(); }),
      ElementsAre(
          "Create HKEY_CLASSES_ROOT\\ovl 0x3f",
          "SetText HKEY_CLASSES_ROOT\\ovl [] 16 URL:ovl Protocol", "Close HKEY_CLASSES_ROOT",
          "Create HKEY_CLASSES_ROOT\\ovl\\DefaultIcon 0x3f",
          "SetText HKEY_CLASSES_ROOT\\ovl\\DefaultIcon [] 10 Kitbay.exe", "Close HKEY_CLASSES_ROOT",
          "Create HKEY_CLASSES_ROOT\\ovl\\shell\\open\\command 0x3f",
          "SetText HKEY_CLASSES_ROOT\\ovl\\shell\\open\\command [] 39 "
          "\"C:\\Program Files\\Kitbay\\Kitbay.exe\" %1",
          "Close HKEY_CLASSES_ROOT", "Open HKEY_CLASSES_ROOT\\ovl 0x3f",
          "SetText HKEY_CLASSES_ROOT\\ovl [URL Protocol] 0 ", "Close HKEY_CLASSES_ROOT\\ovl"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, CommandQuotesTheProgramAndPassesTheUrlUnquoted) {
  settings_.program_folder = "D:\\J\u00FCrgen's Tools";
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl\\shell\\open\\command", ""),
            "\"D:\\J\u00FCrgen's Tools\\Kitbay.exe\" %1");
}

TEST_F(RegistryAccess, IconEntryHoldsOnlyTheFileNameOfTheProgram) {
  settings_.program_name = "KitbayTwo";
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl\\DefaultIcon", ""), "KitbayTwo.exe");
}

TEST_F(RegistryAccess, ProtocolMarkIsAnEmptyValue) {
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl", "URL Protocol"), "");
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl", ""), "URL:ovl Protocol");
}

TEST_F(RegistryAccess, HandlesOfTheKeysThatAreCreatedStayOpen) {
  Make().RegisterUrlHandler();
  EXPECT_THAT(keys_.OpenKeys(), ElementsAre(kSuiteKey, "HKEY_CLASSES_ROOT\\ovl",
                                            "HKEY_CLASSES_ROOT\\ovl\\DefaultIcon",
                                            "HKEY_CLASSES_ROOT\\ovl\\shell\\open\\command"));
}

TEST_F(RegistryAccess, ProtocolIsWrittenOverAnEarlierOne) {
  keys_.AddText("HKEY_CLASSES_ROOT\\ovl\\DefaultIcon", "", "C:\\Old\\Old.exe");
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl\\DefaultIcon", ""), "Kitbay.exe");
}

TEST_F(RegistryAccess, RefusedKeyGoesToTheUsersClassesAndDoesNotStopTheOthers) {
  keys_.DenyAccess("HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl\\DefaultIcon");
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes("HKEY_CURRENT_USER\\Software\\Classes\\ovl\\DefaultIcon", ""),
            "Kitbay.exe");
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl\\shell\\open\\command", ""),
            "\"C:\\Program Files\\Kitbay\\Kitbay.exe\" %1");
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl", "URL Protocol"), "");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, AStandardUsersProtocolGoesToTheUsersClasses) {
  keys_.SetUser(fakes::User::kStandard);
  Make().RegisterUrlHandler();
  const std::string key = "HKEY_CURRENT_USER\\Software\\Classes\\ovl";
  EXPECT_EQ(keys_.Bytes(key, ""), "URL:ovl Protocol");
  EXPECT_EQ(keys_.Bytes(key, "URL Protocol"), "");
  EXPECT_EQ(keys_.Bytes(key + "\\DefaultIcon", ""), "Kitbay.exe");
  EXPECT_EQ(keys_.Bytes(key + "\\shell\\open\\command", ""),
            "\"C:\\Program Files\\Kitbay\\Kitbay.exe\" %1");
  EXPECT_FALSE(keys_.HasKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RegistryAccess, AStandardUsersProtocolLeavesTheMachinesAsItIs) {
  keys_.SetUser(fakes::User::kStandard);
  const std::string machines = "HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl";
  keys_.AddText(machines, "", "URL:Other");
  Make().RegisterUrlHandler();
  EXPECT_EQ(keys_.Bytes(machines, ""), std::string("URL:Other\0", 10));
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl", ""), "URL:ovl Protocol");
  EXPECT_EQ(keys_.Bytes("HKEY_CLASSES_ROOT\\ovl", "URL Protocol"), "");
}

TEST_F(RegistryAccess, TheProtocolGoesToTheMachineWhereTheUserMayWriteThere) {
  Make().RegisterUrlHandler();
  EXPECT_TRUE(keys_.HasKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\ovl\\DefaultIcon"));
  EXPECT_FALSE(keys_.HasKey("HKEY_CURRENT_USER\\Software\\Classes\\ovl"));
}

/// A registry in which every call throws.
class BrokenRegistry : public platform::RegistryKeys {
 public:
  KeyResult Open(platform::RegistryKey, const std::string&, std::uint32_t) override { Break(); }
  KeyResult Create(platform::RegistryKey, const std::string&, std::uint32_t) override { Break(); }
  ValueResult Query(platform::RegistryKey, const std::string&, std::uint32_t) override { Break(); }
  std::int32_t SetText(platform::RegistryKey, const std::string&, std::string_view) override {
    Break();
  }
  std::int32_t Close(platform::RegistryKey) override { Break(); }

 private:
  [[noreturn]] static void Break() { throw std::runtime_error("broken"); }
};

TEST_F(RegistryAccess, EveryMemberLogsItsFailureAndReturnsItsDefault) {
  BrokenRegistry broken;
  {
    Registry registry(log_, broken, settings_);
    EXPECT_EQ(registry.ROOT_REGISTRY_KEY(), 0);
    EXPECT_EQ(registry.GetAppDataPath(), "");
    registry.RegisterUrlHandler();
  }
  using fakes::Entry;
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Class_Initialize", 5, "broken"),
                                        Entry("Kitbay::GetAppDataPath", 5, "broken"),
                                        Entry("Kitbay::RegisterUrlHandler", 5, "broken"),
                                        Entry("Kitbay::Class_Terminate", 5, "broken")));
}

}  // namespace
}  // namespace kitbay::install
