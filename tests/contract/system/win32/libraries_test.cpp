#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "contract/failure_number.h"
#include "contract/system/win32/scratch_folder.h"
#include "contract/system/win32/troubled_libraries.h"
#include "contract/windows/patience.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What only the system's own loader and threads can show.
namespace kitbay::platform::win32 {
namespace {

using contract::CopyTroubledLibrary;
using contract::FailureNumber;
using contract::ScratchFolder;
using contract::SlowLibrary;

constexpr std::uint32_t kLong = contract::kPatienceMs;

class Win32LibrariesTest : public testing::Test {
 protected:
  std::string Copy(const std::string& name, const std::string& file = "library.dll") {
    const std::string path = folder_.path() + "\\" + file;
    CopyTroubledLibrary(name, path);
    return path;
  }

  ThreadHandle Start(LibraryHandle library) {
    return libraries_->StartThread(libraries_->FindExport(library, "DllRegisterServer"));
  }

  /// The exit code of a thread that runs the function of a copied library.
  std::uint32_t Run(const std::string& name) {
    const LibraryHandle library = libraries_->Load(Copy(name), "");
    const ThreadHandle thread = Start(library);
    EXPECT_TRUE(libraries_->Wait(thread, kLong));
    const std::uint32_t code = libraries_->ExitCode(thread);
    libraries_->Close(thread);
    libraries_->Free(library);
    return code;
  }

  ScratchFolder folder_;
  std::unique_ptr<Libraries> libraries_ = MakeLibraries();
};

/// Makes a folder the current one, and adds it to PATH, as long as it lives.
class Planted {
 public:
  explicit Planted(const std::string& folder) {
    GetCurrentDirectoryW(MAX_PATH, current_);
    GetEnvironmentVariableW(L"PATH", path_, kMostOfPath);
    SetCurrentDirectoryW(ToUtf16(folder).c_str());
    SetEnvironmentVariableW(L"PATH", (ToUtf16(folder) + L";" + path_).c_str());
  }
  ~Planted() {
    SetCurrentDirectoryW(current_);
    SetEnvironmentVariableW(L"PATH", path_);
  }
  Planted(const Planted&) = delete;
  Planted& operator=(const Planted&) = delete;

 private:
  static constexpr DWORD kMostOfPath = 8192;
  wchar_t current_[MAX_PATH] = L"";
  wchar_t path_[kMostOfPath] = L"";
};

TEST_F(Win32LibrariesTest, DependencyInTheCurrentFolderOrInPathIsNotLoaded) {
  const ScratchFolder planted_folder;
  CopyTroubledLibrary("OvlHelper", planted_folder.path() + "\\OvlHelper.dll");
  const std::string needy = Copy("OvlNeedy");
  const Planted planted(planted_folder.path());
  {
    // By default the system finds the planted library.
    const UniqueModule careless(LoadLibraryW(ToUtf16(needy).c_str()));
    ASSERT_TRUE(careless);
  }
  EXPECT_EQ(FailureNumber([&] { libraries_->Load(needy, ""); }), 126);
}

TEST_F(Win32LibrariesTest, DependencyInTheLibrarysOwnFolderIsLoaded) {
  Copy("OvlHelper", "OvlHelper.dll");
  EXPECT_EQ(Run("OvlNeedy"), 0U);
}

TEST_F(Win32LibrariesTest, LibraryIsLoadedFarDownInFolders) {
  const auto files = MakeFiles();
  std::string folder = folder_.path();
  for (int level = 0; level < 4; ++level) {
    folder += "\\" + std::string(100, 'x');
    files->CreateFolder(folder);
  }
  CopyTroubledLibrary("OvlHelper", folder + "\\OvlHelper.dll");
  CopyTroubledLibrary("OvlNeedy", folder + "\\OvlNeedy.dll");
  const LibraryHandle library = libraries_->Load(folder + "\\OvlNeedy.dll", "");
  EXPECT_NE(library, LibraryHandle{});
  libraries_->Free(library);
}

TEST_F(Win32LibrariesTest, LibraryOfAnotherProcessorIsRefused) {
  const std::string path = Copy("OvlMute");
  const auto files = MakeFiles();
  std::string bytes = files->Read(path);
  const auto machine = static_cast<std::size_t>(*reinterpret_cast<DWORD*>(&bytes[0x3c])) + 4;
  bytes[machine] = '\x64';
  bytes[machine + 1] = '\xaa';
  files->Create(path, bytes);
  EXPECT_EQ(FailureNumber([&] { libraries_->Load(path, ""); }), 193);
}

TEST_F(Win32LibrariesTest, CrashEndsItsThreadOnly) { EXPECT_EQ(Run("OvlCrashing"), 0xC0000005U); }

TEST_F(Win32LibrariesTest, ExceptionThatGetsOutEndsItsThreadOnly) {
  EXPECT_EQ(Run("OvlThrowing"), 0xE06D7363U);
}

TEST_F(Win32LibrariesTest, WhatALibraryHandlesItselfIsLeftToIt) {
  EXPECT_EQ(Run("OvlRecovering"), 0U);
}

TEST_F(Win32LibrariesTest, CrashAfterCrashIsSurvived) {
  for (int i = 0; i < 70; ++i) {
    ASSERT_EQ(Run("OvlCrashing"), 0xC0000005U) << i;
  }
}

TEST_F(Win32LibrariesTest, FreedLibraryIsGoneThoughItsThreadStillRuns) {
  const SlowLibrary slow;
  const LibraryHandle library = libraries_->Load(Copy("OvlSlow"), "");
  const ThreadHandle thread = Start(library);
  ASSERT_FALSE(libraries_->Wait(thread, 1));
  libraries_->Free(library);
  EXPECT_EQ(GetModuleHandleW(L"library.dll"), nullptr);
  slow.LetReturn();
  EXPECT_TRUE(libraries_->Wait(thread, kLong));
  libraries_->Close(thread);
}

TEST_F(Win32LibrariesTest, NoLibraryTakesThePlaceThatAThreadReturnsTo) {
  const SlowLibrary slow;
  const LibraryHandle library = libraries_->Load(Copy("OvlSlow"), "");
  const ThreadHandle thread = Start(library);
  ASSERT_FALSE(libraries_->Wait(thread, 1));
  libraries_->Free(library);
  const LibraryHandle twin = libraries_->Load(Copy("OvlSlow", "twin.dll"), "");
  EXPECT_NE(twin, library);
  slow.LetReturn();
  EXPECT_TRUE(libraries_->Wait(thread, kLong));
  EXPECT_EQ(libraries_->ExitCode(thread), 0xC0000005U);
  libraries_->Close(thread);
  libraries_->Free(twin);
}

TEST_F(Win32LibrariesTest, ThreadsOfAFreedLibraryAreEndedAsWell) {
  const SlowLibrary slow;
  const LibraryHandle library = libraries_->Load(Copy("OvlRestless"), "");
  const ThreadHandle thread = Start(library);
  ASSERT_FALSE(libraries_->Wait(thread, 100));
  libraries_->Free(library);
  slow.LetReturn();
  EXPECT_TRUE(libraries_->Wait(thread, kLong));
  EXPECT_EQ(libraries_->ExitCode(thread), 0xC0000005U);
  libraries_->Close(thread);
}

TEST_F(Win32LibrariesTest, PlaceOfALibraryThatHasReturnedIsFreeAgain) {
  const LibraryHandle library = libraries_->Load(Copy("OvlRefusing"), "");
  const ThreadHandle thread = Start(library);
  ASSERT_TRUE(libraries_->Wait(thread, kLong));
  libraries_->Close(thread);
  libraries_->Free(library);
  void* const place = reinterpret_cast<void*>(library.value);
  void* const taken = VirtualAlloc(place, 1, MEM_RESERVE, PAGE_NOACCESS);
  EXPECT_EQ(taken, place);
  VirtualFree(taken, 0, MEM_RELEASE);
}

TEST_F(Win32LibrariesTest, WindowsOfTheCallerDoNotWorkMeanwhile) {
  const HWND window = CreateWindowExW(0, L"Static", L"Kitbay", WS_OVERLAPPED, 0, 0, 100, 100,
                                      nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  LRESULT answered = 1;
  libraries_->RunOnOwnThread([&] {
    DWORD_PTR ignored = 0;
    answered = SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, 100, &ignored);
  });
  EXPECT_EQ(answered, 0);
  DestroyWindow(window);
}

TEST_F(Win32LibrariesTest, ExceptionsOfOtherThreadsGoTheirWay) {
  bool caught = false;
  std::thread([&] {
    try {
      throw std::runtime_error("of the program");
    } catch (const std::runtime_error&) {
      caught = true;
    }
  }).join();
  EXPECT_TRUE(caught);
}

LONG WINAPI EndWithSeven(EXCEPTION_POINTERS* /*exception*/) { ExitThread(7); }

TEST(Win32LibrariesFilter, FaultsOfOtherThreadsStayWithTheProgramsOwnFilter) {
  const auto before = SetUnhandledExceptionFilter(&EndWithSeven);
  {
    const auto libraries = MakeLibraries();
    const UniqueKernelObject thread(CreateThread(nullptr, 0, nullptr, nullptr, 0, nullptr));
    ASSERT_TRUE(thread);
    ASSERT_EQ(WaitForSingleObject(thread.get(), kLong), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeThread(thread.get(), &code);
    EXPECT_EQ(code, 7U);
  }
  EXPECT_EQ(SetUnhandledExceptionFilter(before), &EndWithSeven);
}

}  // namespace
}  // namespace kitbay::platform::win32
