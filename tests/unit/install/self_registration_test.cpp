#include "install/self_registration.h"

#include <gmock/gmock.h>

#include "fakes/recording_error_log.h"
#include "fakes/recording_libraries.h"

namespace kitbay::install {
namespace {

using fakes::Entry;
using fakes::RecordingErrorLog;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSpell = "C:\\Suite\\addons\\spellcheck\\OvlSpell.dll";
constexpr const char* kLoadSpell =
    "Load [C:\\Suite\\addons\\spellcheck\\OvlSpell.dll] [C:\\Suite\\]";
constexpr std::uint32_t kFailureCode = 0x80004005;

class SelfRegistrationTest : public testing::Test {
 protected:
  SelfRegistrationTest() { settings_.InstallFolder = "C:\\Suite\\"; }

  std::int32_t Register(const std::string& path, bool register_it = true) {
    return registration_.DLLRegisterService(path, register_it);
  }

  fakes::RecordingErrorLog log_;
  fakes::RecordingLibraries libraries_;
  InstallSession session_;
  base::Settings settings_;
  SelfRegistration registration_{log_, settings_, libraries_, session_};
};

TEST_F(SelfRegistrationTest, LibraryIsLoadedRunAndFreedOnAThreadOfItsOwn) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {}}, {"DllUnregisterServer", {}}});
  EXPECT_EQ(Register(kSpell), 0);
  EXPECT_THAT(
      libraries_.calls(),
      ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                  "StartThread 4097", "Wait 1 10000", "Close 1", "Free 1", "Own thread ends"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, UnregisteringRunsTheOtherFunction) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {}}, {"DllUnregisterServer", {}}});
  EXPECT_EQ(Register(kSpell, false), 0);
  EXPECT_THAT(
      libraries_.calls(),
      ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllUnregisterServer]",
                  "StartThread 4098", "Wait 1 10000", "Close 1", "Free 1", "Own thread ends"));
}

TEST_F(SelfRegistrationTest, FailureCodeOfTheLibraryIsIgnored) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {kFailureCode}}});
  EXPECT_EQ(Register(kSpell), 0);
  EXPECT_THAT(
      libraries_.calls(),
      ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                  "StartThread 4097", "Wait 1 10000", "Close 1", "Free 1", "Own thread ends"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, MissingLibraryGivesOneAndOneEntry) {
  EXPECT_EQ(Register(kSpell), 1);
  EXPECT_THAT(libraries_.calls(), ElementsAre("RunOnOwnThread", kLoadSpell, "Own thread ends"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry(" Kitbay::Loading of library failed", 126, "Module not found.")));
}

TEST_F(SelfRegistrationTest, FileThatIsNotALibraryIsLoggedWithTheSystemsOwnNumber) {
  libraries_.AddUnloadable(kSpell, {193, "Not a valid Win32 application."});
  EXPECT_EQ(Register(kSpell), 1);
  EXPECT_THAT(log_.entries, ElementsAre(Entry(" Kitbay::Loading of library failed", 193,
                                              "Not a valid Win32 application.")));
}

TEST_F(SelfRegistrationTest, PathThatIsNotFullIsNotLoaded) {
  EXPECT_EQ(Register("OvlSpell.dll"), 1);
  EXPECT_THAT(log_.entries, ElementsAre(Entry(" Kitbay::Loading of library failed", 75,
                                              "Path/File access error: OvlSpell.dll")));
}

TEST_F(SelfRegistrationTest, AddressOneGivesOneWithoutAThread) {
  libraries_.Add(kSpell, {});
  libraries_.SetAddress(kSpell, "DllRegisterServer", 1);
  EXPECT_EQ(Register(kSpell), 1);
  EXPECT_THAT(libraries_.calls(),
              ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                          "Free 1", "Own thread ends"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, LibraryWithoutTheFunctionStillGetsAThread) {
  libraries_.Add(kSpell, {{"DllGetClassObject", {}}});
  EXPECT_EQ(Register(kSpell), 0);
  EXPECT_THAT(libraries_.calls(),
              ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                          "StartThread 0", "Wait 1 10000", "Close 1", "Free 1", "Own thread ends"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, RefusedThreadGivesTwo) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {}}});
  libraries_.RefuseThreads();
  EXPECT_EQ(Register(kSpell), 2);
  EXPECT_THAT(libraries_.calls(),
              ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                          "StartThread 4097", "Free 1", "Own thread ends"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, TimeOutFreesTheLibraryAndEndsTheThreadThatWaited) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {.hangs = true}}});
  EXPECT_EQ(Register(kSpell), 3);
  EXPECT_THAT(libraries_.calls(),
              ElementsAre("RunOnOwnThread", kLoadSpell, "FindExport 1 [DllRegisterServer]",
                          "StartThread 4097", "Wait 1 10000", "Free 1", "ExitCode 1",
                          "EndThread 259", "Own thread ends"));
  EXPECT_EQ(libraries_.threads(), 1U);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SelfRegistrationTest, LibraryThatTimedOutIsNotLoadedAgain) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {.hangs = true}}});
  Register(kSpell);
  const auto calls = libraries_.calls().size();
  EXPECT_EQ(Register("c:\\suite\\ADDONS\\spellcheck\\ovlspell.DLL"), 3);
  EXPECT_EQ(Register(kSpell, false), 3);
  EXPECT_EQ(libraries_.calls().size(), calls);
  EXPECT_THAT(
      log_.entries,
      ElementsAre(
          Entry("Kitbay::DLLRegisterService", 75,
                "Path/File access error: c:\\suite\\ADDONS\\spellcheck\\ovlspell.DLL did not "
                "return in time before"),
          Entry("Kitbay::DLLRegisterService", 75,
                "Path/File access error: C:\\Suite\\addons\\spellcheck\\OvlSpell.dll did not "
                "return in time before")));
}

class OtherSpelling : public SelfRegistrationTest,
                      public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Paths, OtherSpelling,
                         testing::Values("C:\\Suite\\\\addons\\spellcheck\\OvlSpell.dll",
                                         "C:\\Suite\\addons\\spellcheck\\.\\OvlSpell.dll",
                                         "C:/Suite/addons//spellcheck/OvlSpell.dll",
                                         "C:\\Suite\\addons\\x\\..\\spellcheck\\OvlSpell.dll",
                                         "C:\\..\\Suite\\addons\\spellcheck\\OVLSPELL.DLL"));

TEST_P(OtherSpelling, OfALibraryThatTimedOutIsTheSameLibrary) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {.hangs = true}}});
  EXPECT_EQ(Register(kSpell), 3);
  const auto calls = libraries_.calls().size();
  EXPECT_EQ(Register(GetParam()), 3);
  EXPECT_EQ(libraries_.calls().size(), calls);
  EXPECT_EQ(log_.entries.size(), 1U);
}

TEST_F(SelfRegistrationTest, AnotherLibraryIsRegisteredAfterATimeOut) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {.hangs = true}}});
  libraries_.Add("C:\\Suite\\OvlReply.dll", {{"DllRegisterServer", {}}});
  Register(kSpell);
  EXPECT_EQ(Register("C:\\Suite\\OvlReply.dll"), 0);
  EXPECT_EQ(libraries_.loaded(), 0U);
}

TEST_F(SelfRegistrationTest, LibraryThatCouldNotBeLoadedIsTriedAgain) {
  EXPECT_EQ(Register(kSpell), 1);
  libraries_.Add(kSpell, {{"DllRegisterServer", {}}});
  EXPECT_EQ(Register(kSpell), 0);
}

TEST_F(SelfRegistrationTest, RunTimeErrorIsLoggedAndGivesZero) {
  libraries_.Fail("RunOnOwnThread", base::Failure(base::RuntimeError::kOutOfMemory));
  EXPECT_EQ(Register(kSpell), 0);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::DLLRegisterService", 7, "Out of memory")));
}

TEST_F(SelfRegistrationTest, RunTimeErrorOnTheOwnThreadIsLoggedAndGivesZero) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {}}});
  libraries_.Fail("Wait", base::Failure(base::RuntimeError::kInvalidProcedureCall));
  EXPECT_EQ(Register(kSpell), 0);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::DLLRegisterService", 5,
                                              "Invalid procedure call or argument")));
}

TEST_F(SelfRegistrationTest, RunTimeErrorAfterTheTimeOutKeepsThree) {
  libraries_.Add(kSpell, {{"DllRegisterServer", {.hangs = true}}});
  libraries_.Fail("ExitCode", base::Failure(base::RuntimeError::kInvalidProcedureCall));
  EXPECT_EQ(Register(kSpell), 3);
  EXPECT_EQ(log_.entries.size(), 1U);
}

TEST_F(SelfRegistrationTest, EveryLibraryOfTheListIsRegisteredInOrder) {
  session_.libraries = {"One.dll", "sub\\Two.dll"};
  libraries_.Add("C:\\Suite\\addons\\pair\\One.dll", {{"DllRegisterServer", {}}});
  libraries_.Add("C:\\Suite\\addons\\pair\\sub\\Two.dll", {{"DllRegisterServer", {}}});
  EXPECT_TRUE(registration_.funcRegisterDll("C:\\Suite\\addons\\pair"));
  EXPECT_THAT(libraries_.calls(),
              ElementsAre("RunOnOwnThread", "Load [C:\\Suite\\addons\\pair\\One.dll] [C:\\Suite\\]",
                          "FindExport 1 [DllRegisterServer]", "StartThread 4097", "Wait 1 10000",
                          "Close 1", "Free 1", "Own thread ends", "RunOnOwnThread",
                          "Load [C:\\Suite\\addons\\pair\\sub\\Two.dll] [C:\\Suite\\]",
                          "FindExport 2 [DllRegisterServer]", "StartThread 4098", "Wait 2 10000",
                          "Close 2", "Free 2", "Own thread ends"));
}

TEST_F(SelfRegistrationTest, FailuresDoNotStopTheList) {
  session_.libraries = {"missing.dll", "hangs.dll", "", "Last.dll"};
  libraries_.Add("C:\\Suite\\hangs.dll", {{"DllRegisterServer", {.hangs = true}}});
  libraries_.Add("C:\\Suite\\Last.dll", {{"DllRegisterServer", {}}});
  EXPECT_TRUE(registration_.funcRegisterDll("C:\\Suite"));
  EXPECT_THAT(
      libraries_.calls(),
      ElementsAre("RunOnOwnThread", "Load [C:\\Suite\\missing.dll] [C:\\Suite\\]",
                  "Own thread ends", "RunOnOwnThread", "Load [C:\\Suite\\hangs.dll] [C:\\Suite\\]",
                  "FindExport 1 [DllRegisterServer]", "StartThread 4097", "Wait 1 10000", "Free 1",
                  "ExitCode 1", "EndThread 259", "Own thread ends", "RunOnOwnThread",
                  "Load [C:\\Suite\\] [C:\\Suite\\]", "Own thread ends", "RunOnOwnThread",
                  "Load [C:\\Suite\\Last.dll] [C:\\Suite\\]", "FindExport 2 [DllRegisterServer]",
                  "StartThread 4098", "Wait 2 10000", "Close 2", "Free 2", "Own thread ends"));
  EXPECT_EQ(log_.entries.size(), 2U);
}

TEST_F(SelfRegistrationTest, EmptyListMakesNoCallAndSucceeds) {
  EXPECT_TRUE(registration_.funcRegisterDll("C:\\Suite"));
  EXPECT_THAT(libraries_.calls(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::install
