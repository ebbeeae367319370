#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <memory>
#include <string>

#include "contract/system/elevation_contract.h"
#include "contract/windows/patience.h"
#include "contract/windows/replaced_import.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What the program requests from Windows for an administrator's rights, and what Windows answers.
namespace kitbay::contract {
namespace {

using platform::ElevationAnswer;
using platform::win32::MakeElevation;
using platform::win32::ToUtf8;
using platform::win32::UniqueKernelObject;

constexpr wchar_t kAsked[] = L"KITBAY_ASKED_FOR_RIGHTS";

/// Receives the question in these tests.
struct Asked {
  int questions = 0;
  DWORD error = ERROR_SUCCESS;
  std::string verb;
  std::string file;
  bool is_marked = false;
};

Asked& TheQuestion() {
  static Asked question;
  return question;
}

BOOL WINAPI Answer(SHELLEXECUTEINFOW* start) {
  Asked& question = TheQuestion();
  ++question.questions;
  question.verb = ToUtf8(start->lpVerb);
  question.file = ToUtf8(start->lpFile);
  question.is_marked = GetEnvironmentVariableW(kAsked, nullptr, 0) != 0;
  SetLastError(question.error);
  return question.error == ERROR_SUCCESS;
}

class Win32ElevationWorld : public ElevationWorld {
 public:
  Win32ElevationWorld() { TheQuestion() = {}; }
  platform::Elevation& elevation() override { return *elevation_; }
  void AnswerWith(ElevationAnswer answer) override {
    TheQuestion().error = answer == ElevationAnswer::kStarted    ? ERROR_SUCCESS
                          : answer == ElevationAnswer::kDeclined ? ERROR_CANCELLED
                                                                 : ERROR_ACCESS_DISABLED_BY_POLICY;
  }
  int questions() const override { return TheQuestion().questions; }

 private:
  ReplacedImport shell_{"ShellExecuteExW", reinterpret_cast<void*>(&Answer)};
  std::unique_ptr<platform::Elevation> elevation_ = MakeElevation();
};

std::unique_ptr<ElevationWorld> MakeWorld() { return std::make_unique<Win32ElevationWorld>(); }

INSTANTIATE_TEST_SUITE_P(Win32, ElevationContract, testing::Values(&MakeWorld));

TEST(Win32Elevation, AsksForThisProgramByTheVerbThatAsks) {
  Win32ElevationWorld world;
  world.elevation().StartWithAdministratorRights();
  const platform::win32::ProgramPlace place = platform::win32::FindProgramPlace();
  EXPECT_EQ(TheQuestion().verb, "runas");
  EXPECT_EQ(TheQuestion().file, place.folder + "\\" + place.name + ".exe");
}

TEST(Win32Elevation, AProgramThatWasStartedByTheQuestionDoesNotAskAgain) {
  Win32ElevationWorld first;
  first.elevation().StartWithAdministratorRights();
  EXPECT_TRUE(TheQuestion().is_marked) << "as what is started inherits it";
  EXPECT_EQ(GetEnvironmentVariableW(kAsked, nullptr, 0), 0U);

  SetEnvironmentVariableW(kAsked, L"1");
  Win32ElevationWorld second;
  EXPECT_EQ(second.elevation().StartWithAdministratorRights(), ElevationAnswer::kUnavailable);
  EXPECT_EQ(second.questions(), 0);
  EXPECT_EQ(GetEnvironmentVariableW(kAsked, nullptr, 0), 0U)
      << "what this program starts may ask again";
}

/// What a program started with `token` reports about its rights; with this process's token if none
/// is given.
DWORD RightsOf(HANDLE token) {
  std::wstring program = platform::win32::ToUtf16(platform::win32::FindProgramPlace().folder +
                                                  "\\kitbay_contract_rights.exe");
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  EXPECT_TRUE(CreateProcessAsUserW(token, program.c_str(), nullptr, nullptr, nullptr, FALSE, 0,
                                   nullptr, nullptr, &startup, &started));
  const UniqueKernelObject process(started.hProcess);
  const UniqueKernelObject thread(started.hThread);
  EXPECT_EQ(WaitForSingleObject(process.get(), kPatienceMs), WAIT_OBJECT_0);
  DWORD code = 99;
  GetExitCodeProcess(process.get(), &code);
  return code;
}

TEST(Win32Elevation, RightsThatAreNotInForceDoNotCount) {
  UniqueKernelObject token;
  ASSERT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, token.put()));
  EXPECT_EQ(RightsOf(nullptr), MakeElevation()->HasAdministratorRights() ? 1U : 0U);
  TOKEN_ELEVATION_TYPE type{};
  DWORD size = 0;
  ASSERT_TRUE(GetTokenInformation(token.get(), TokenElevationType, &type, sizeof type, &size));
  if (type == TokenElevationTypeDefault) {
    GTEST_SKIP() << "this user has no other token";
  }
  TOKEN_LINKED_TOKEN linked{};
  ASSERT_TRUE(GetTokenInformation(token.get(), TokenLinkedToken, &linked, sizeof linked, &size));
  const UniqueKernelObject other(linked.LinkedToken);
  const bool is_full = type == TokenElevationTypeFull;
  EXPECT_EQ(RightsOf(token.get()), is_full ? 1U : 0U);
  EXPECT_EQ(RightsOf(other.get()), is_full ? 0U : 1U);
}

}  // namespace
}  // namespace kitbay::contract
