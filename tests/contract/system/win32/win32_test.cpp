#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <atomic>
#include <string>
#include <thread>

#include "contract/failure_number.h"
#include "contract/system/win32/scratch_folder.h"
#include "contract/system/win32/test_window.h"
#include "contract/windows/patience.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What only the real system can show.
namespace kitbay::platform::win32 {
namespace {

using contract::FailureNumber;
using contract::OnClose;
using contract::ScratchFolder;
using contract::TestWindow;

WindowHandle HandleOf(const TestWindow& window) {
  return {reinterpret_cast<std::uintptr_t>(window.handle())};
}

bool IsTopmost(const TestWindow& window) {
  return (GetWindowLongPtrW(window.handle(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

TEST(Win32Desktop, AWindowIsLiftedAndIsNotLeftTopmost) {
  const auto desktop = MakeDesktop();
  const TestWindow window("Kitbay", OnClose::kStays);
  desktop->SetWindowPos(HandleOf(window), kTopmost, kNoSize | kNoMove);
  EXPECT_TRUE(IsTopmost(window));
  desktop->SetWindowPos(HandleOf(window), kNotTopmost, kNoSize | kNoMove);
  EXPECT_FALSE(IsTopmost(window));
  RECT place{};
  GetWindowRect(window.handle(), &place);
  EXPECT_EQ(place.right - place.left, 300);
  EXPECT_EQ(place.bottom - place.top, 200);
}

TEST(Win32Desktop, AMinimisedWindowIsRestoredAndAHiddenOneShown) {
  const auto desktop = MakeDesktop();
  const TestWindow window("Kitbay", OnClose::kStays);
  ::ShowWindow(window.handle(), SW_MINIMIZE);
  ASSERT_TRUE(IsIconic(window.handle()));
  desktop->ShowWindow(HandleOf(window), kRestore);
  EXPECT_FALSE(IsIconic(window.handle()));
  ::ShowWindow(window.handle(), SW_HIDE);
  desktop->ShowWindow(HandleOf(window), kShow);
  EXPECT_TRUE(IsWindowVisible(window.handle()));
}

TEST(Win32Desktop, AWindowOfTheCallingThreadBecomesActive) {
  const auto desktop = MakeDesktop();
  const auto make = [](const wchar_t* caption) {
    return CreateWindowExW(0, L"Static", caption, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                           nullptr, nullptr, nullptr, nullptr);
  };
  const HWND first = make(L"first");
  const HWND second = make(L"second");
  desktop->SetActiveWindow({reinterpret_cast<std::uintptr_t>(first)});
  EXPECT_EQ(GetActiveWindow(), first);
  desktop->SetActiveWindow({reinterpret_cast<std::uintptr_t>(second)});
  EXPECT_EQ(GetActiveWindow(), second);
  DestroyWindow(second);
  DestroyWindow(first);
}

TEST(Win32Desktop, TheCloseMessageCarriesTheAddressOfAZero) {
  const auto desktop = MakeDesktop();
  const TestWindow window("Kitbay", OnClose::kStays);
  ASSERT_EQ(window.close_value(), -1);
  desktop->SendClose(HandleOf(window));
  EXPECT_EQ(window.close_value(), 0);
}

TEST(Win32Desktop, AWindowThatLooksLateStillFindsTheZero) {
  const auto desktop = MakeDesktop();
  const TestWindow window("Kitbay", OnClose::kHangs);
  desktop->SendClose(HandleOf(window));
  EXPECT_EQ(window.close_value(), -1);
  window.LetAnswer();
  EXPECT_EQ(window.AwaitCloseValue(), 0);
}

/// A copy of the program that the tests start, whose name no other program has, and the event that
/// it sets.
class StartedProgram {
 public:
  explicit StartedProgram(const ScratchFolder& folder)
      : name_("Größe mit Blank " + std::to_string(GetCurrentProcessId()) + ".exe"),
        path_(folder.path() + "\\" + name_),
        started_(CreateEventW(nullptr, TRUE, FALSE, ToUtf16(name_).c_str())) {
    const auto files = MakeFiles();
    files->Create(path_, files->Read(FindProgramPlace().folder + "\\kitbay_contract_started.exe"));
  }

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] bool AwaitStart() const {
    return WaitForSingleObject(started_.get(), contract::kPatienceMs) == WAIT_OBJECT_0;
  }

 private:
  std::string name_;
  std::string path_;
  UniqueKernelObject started_;
};

TEST(Win32Desktop, AProgramIsStartedShownNormally) {
  const ScratchFolder folder;
  const StartedProgram program(folder);
  MakeDesktop()->StartProgram(program.path());
  EXPECT_TRUE(program.AwaitStart());
}

TEST(Win32Desktop, TheBitsOfAProgramAreThoseThatItsHeaderTells) {
  const ScratchFolder folder;
  MakeFiles()->Create(folder.path() + "\\text.exe", "no program");
  const auto desktop = MakeDesktop();
  constexpr int kOwnBits = 8 * sizeof(void*);
  EXPECT_EQ(desktop->ProgramBits(FindProgramPlace().folder + "\\kitbay_contract_started.exe"),
            kOwnBits);
  EXPECT_EQ(desktop->ProgramBits(folder.path() + "\\text.exe"), std::nullopt);
  EXPECT_EQ(desktop->ProgramBits(folder.path() + "\\missing.exe"), std::nullopt);
  EXPECT_EQ(desktop->ProgramBits(""), std::nullopt);
}

/// Initialises COM for the thread of a test.
class Apartment {
 public:
  Apartment() { EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr))); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

TEST(Win32Desktop, AProgramIsStartedByTheShellWithTheShellsOwnSurroundings) {
  const Apartment apartment;
  const ScratchFolder folder;
  const StartedProgram program(folder);
  // A child of this process would inherit this and set no event.
  SetEnvironmentVariableW(L"KITBAY_TESTS_SILENCE", L"yes");
  MakeDesktop()->StartProgramAsUser(program.path());
  EXPECT_TRUE(program.AwaitStart());
  SetEnvironmentVariableW(L"KITBAY_TESTS_SILENCE", nullptr);
}

TEST(Win32Desktop, AMissingProgramIsNotLeftToTheShell) {
  const Apartment apartment;
  const ScratchFolder folder;
  EXPECT_EQ(
      FailureNumber([&] { MakeDesktop()->StartProgramAsUser(folder.path() + "\\Tessel.exe"); }),
      53);
}

TEST(Win32Desktop, WithoutComNoShellIsFound) {
  const ScratchFolder folder;
  MakeFiles()->Create(folder.path() + "\\text.exe", "no program");
  EXPECT_EQ(FailureNumber([&] { MakeDesktop()->StartProgramAsUser(folder.path() + "\\text.exe"); }),
            CO_E_NOTINITIALIZED);
}

TEST(Win32Desktop, AProgramThatCannotBeStartedIsReported) {
  const ScratchFolder folder;
  MakeFiles()->Create(folder.path() + "\\text.exe", "no program");
  const auto failure = [&](const std::string& path) {
    return FailureNumber([&] { MakeDesktop()->StartProgram(path); });
  };
  EXPECT_EQ(failure(folder.path() + "\\Tessel.exe"), 53);
  EXPECT_EQ(failure(folder.path() + "\\missing\\Tessel.exe"), 53);
  EXPECT_EQ(failure(folder.path() + "\\text.exe"), 5);
}

TEST(Win32Files, AReaderSeesTheOldFileOrTheNewOneWhole) {
  const ScratchFolder folder;
  const auto files = MakeFiles();
  const std::string path = folder.path() + "\\olregistry.xml";
  const std::string old_bytes(70'000, 'o');
  const std::string new_bytes(90'000, 'n');
  files->Create(path, old_bytes);

  std::atomic<bool> done = false;
  std::atomic<int> reads = 0;
  int wrong_reads = 0;
  std::thread reader([&] {
    while (!done) {
      std::string bytes;
      if (FailureNumber([&] { bytes = MakeFiles()->Read(path); }) == 70) {
        continue;  // opened at the very moment of the change
      }
      wrong_reads += bytes != old_bytes && bytes != new_bytes ? 1 : 0;
      ++reads;
      std::this_thread::yield();
    }
  });
  int replaced = 0;
  while (replaced < 30 || reads < 30) {
    const std::string& bytes = replaced % 2 == 0 ? new_bytes : old_bytes;
    const int number = FailureNumber([&] { files->Replace(path, bytes); });
    ASSERT_TRUE(number == 0 || number == 70) << number;  // denied while the reader has it open
    replaced += number == 0 ? 1 : 0;
  }
  done = true;
  reader.join();
  EXPECT_EQ(wrong_reads, 0);
}

TEST(Win32Files, ReplaceKeepsTheMarksOfTheFile) {
  const ScratchFolder folder;
  const auto files = MakeFiles();
  const std::string path = folder.path() + "\\a.xml";
  files->Create(path, "old");
  ASSERT_TRUE(SetFileAttributesW(ToUtf16(path).c_str(), FILE_ATTRIBUTE_HIDDEN));
  files->Replace(path, "new");
  EXPECT_EQ(files->Read(path), "new");
  EXPECT_NE(GetFileAttributesW(ToUtf16(path).c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST(Win32Files, ADeviceIsNoFile) {
  const auto files = MakeFiles();
  EXPECT_EQ(FailureNumber([&] { files->Read("C:\\con"); }), 75);
  EXPECT_EQ(FailureNumber([&] { files->Create("C:\\nul", "x"); }), 75);
  EXPECT_FALSE(files->Exists("C:\\con"));
}

TEST(Win32Files, EveryCauseHasItsNumber) {
  EXPECT_EQ(FileFailure(ERROR_FILE_NOT_FOUND).number(), 53);
  EXPECT_EQ(FileFailure(ERROR_PATH_NOT_FOUND).number(), 76);
  EXPECT_EQ(FileFailure(ERROR_SHARING_VIOLATION).number(), 70);
  EXPECT_EQ(FileFailure(ERROR_DISK_FULL).number(), 61);
  EXPECT_EQ(FileFailure(ERROR_HANDLE_DISK_FULL).number(), 61);
  EXPECT_EQ(FileFailure(ERROR_CRC).number(), 75);
}

TEST(Win32Registry, AWrittenTextHasNoTerminatorOfItsOwn) {
  const auto keys = MakeRegistryKeys();
  const std::string name = "Software\\Kitbay.Tests\\" + std::to_string(GetCurrentProcessId());
  const auto key = keys->Create(kCurrentUser, name, kKeyReadWrite).key;
  ASSERT_EQ(keys->SetText(key, "", "Größe"), 0);
  wchar_t data[16] = L"";
  DWORD size = sizeof(data);
  DWORD type = 0;
  EXPECT_EQ(RegQueryValueExW(reinterpret_cast<HKEY>(key.handle), L"", nullptr, &type,
                             reinterpret_cast<BYTE*>(data), &size),
            ERROR_SUCCESS);
  EXPECT_EQ(type, DWORD{REG_SZ});
  EXPECT_EQ(size, 5 * sizeof(wchar_t));
  EXPECT_EQ(keys->Close(key), 0);
  RegDeleteTreeW(HKEY_CURRENT_USER, ToUtf16(name).c_str());
}

TEST(Win32Program, ItsPlaceIsFolderAndNameWithoutEnding) {
  const ProgramPlace place = FindProgramPlace();
  EXPECT_EQ(place.name, "kitbay_contract_system");
  EXPECT_TRUE(MakeFiles()->Exists(place.folder + "\\" + place.name + ".exe"));
}

TEST(Utf, TextSurvivesTheWayThereAndBack) {
  using namespace std::string_literals;
  const std::string text = "a\0ä設\xF0\x9F\x98\x80"s;
  EXPECT_EQ(ToUtf16(text), L"a\0\u00E4\u8A2D\xD83D\xDE00"s);
  EXPECT_EQ(ToUtf8(ToUtf16(text)), text);
  EXPECT_EQ(ToUtf16(""), L"");
  EXPECT_EQ(ToUtf8(L""), "");
}

TEST(Utf, WhatIsNoTextBecomesTheReplacementCharacter) {
  EXPECT_EQ(ToUtf16("a\xFFz"), L"a\uFFFDz");
  EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800)) + L"z"), "\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace kitbay::platform::win32
