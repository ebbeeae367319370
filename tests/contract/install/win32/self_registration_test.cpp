#include "install/self_registration.h"

#include <gmock/gmock.h>
#include <windows.h>
// After windows.h, which they need.
#include <sddl.h>
#include <tlhelp32.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "contract/install/win32/watched_libraries.h"
#include "contract/system/win32/scratch_folder.h"
#include "contract/system/win32/troubled_libraries.h"
#include "contract/windows/patience.h"
#include "fakes/recording_error_log.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

using install::InstallSession;
using install::SelfRegistration;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kLong = kPatienceMs;
constexpr const wchar_t* kProgId = L"Software\\Classes\\OvlContract.Component";
constexpr const wchar_t* kClass = L"Software\\Classes\\CLSID\\" KITBAY_CONTRACT_CLSID;

/// The text of a key of the machine; empty if there is no such key.
std::string TextOf(const std::wstring& key) {
  wchar_t text[1024] = L"";
  DWORD size = sizeof(text);
  RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
  return platform::win32::ToUtf8(text);
}

/// Creates a key of the machine that nobody may write to, as Windows refuses all of them to a
/// standard user.
void RefuseKey(const std::wstring& name) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KR;;;WD)(A;;SD;;;WD)",
                                                       SDDL_REVISION_1, &descriptor, nullptr);
  platform::win32::UniqueRegistryKey key;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, 0, WRITE_DAC, nullptr, key.put(),
                  nullptr);
  EXPECT_EQ(RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
  LocalFree(descriptor);
}

/// The threads that the process had when this object was created. Their handles stay open, so that
/// none of those that end leaves its number to a new thread.
class ThreadsOfThisProcess {
 public:
  ThreadsOfThisProcess() : threads_(Now()) {}

  /// The threads that were started since then.
  std::vector<platform::win32::UniqueKernelObject> Newer() const {
    std::vector<platform::win32::UniqueKernelObject> newer;
    Threads now = Now();
    for (auto& [id, thread] : now) {
      if (!threads_.contains(id)) {
        newer.push_back(std::move(thread));
      }
    }
    return newer;
  }

 private:
  using Threads = std::map<DWORD, platform::win32::UniqueKernelObject>;

  static Threads Now() {
    Threads threads;
    const platform::win32::UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL there = Thread32First(snapshot.get(), &entry); there;
         there = Thread32Next(snapshot.get(), &entry)) {
      if (entry.th32OwnerProcessID != GetCurrentProcessId()) {
        continue;
      }
      platform::win32::UniqueKernelObject thread(
          OpenThread(SYNCHRONIZE | THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID));
      // One that has ended since the snapshot cannot be opened.
      if (thread.get() != nullptr) {
        threads.emplace(entry.th32ThreadID, std::move(thread));
      }
    }
    return threads;
  }

  Threads threads_;
};

class RealSelfRegistration : public testing::Test {
 protected:
  RealSelfRegistration() { ForgetClass(); }
  ~RealSelfRegistration() override { ForgetClass(); }
  RealSelfRegistration(const RealSelfRegistration&) = delete;
  RealSelfRegistration& operator=(const RealSelfRegistration&) = delete;

  static void ForgetClass() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kProgId);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kClass);
  }

  static std::string RegisteredLibrary() {
    return TextOf(std::wstring(kClass) + L"\\InprocServer32");
  }

  std::string CopyComponent(const std::string& name) {
    const auto files = platform::win32::MakeFiles();
    const std::string path = folder_.path() + "\\" + name;
    files->Create(path, files->Read(platform::win32::FindProgramPlace().folder +
                                    "\\registering\\OvlContract.dll"));
    return path;
  }

  std::string Copy(const std::string& troubled) {
    const std::string path = folder_.path() + "\\" + troubled + ".dll";
    CopyTroubledLibrary(troubled, path);
    return path;
  }

  std::int32_t Register(const std::string& path, bool register_it = true) {
    return registration_.DLLRegisterService(path, register_it);
  }

  /// Whether nothing can be loaded at the address of the library that was loaded last.
  bool IsPlaceKept() const {
    auto* const place = reinterpret_cast<void*>(libraries_.last_library().value);
    constexpr SIZE_T kSize = 1;
    if (VirtualAlloc(place, kSize, MEM_RESERVE, PAGE_NOACCESS) == nullptr) {
      return true;
    }
    VirtualFree(place, 0, MEM_RELEASE);
    return false;
  }

  std::vector<std::string> Logged() const {
    std::vector<std::string> lines;
    for (const auto& entry : log_.entries) {
      lines.push_back(std::to_string(entry.number) + entry.procedure);
    }
    return lines;
  }

  ScratchFolder folder_;
  fakes::RecordingErrorLog log_;
  WatchedLibraries libraries_;
  InstallSession session_;
  base::Settings settings_;
  SelfRegistration registration_{log_, settings_, libraries_, session_};
};

TEST_F(RealSelfRegistration, LibraryIsInTheRegistryAfterwardsAndOutAgain) {
  const std::string path = CopyComponent("Größe ö.dll");
  EXPECT_EQ(Register(path), 0);
  EXPECT_EQ(RegisteredLibrary(), path);
  EXPECT_EQ(TextOf(kProgId), "Contract");
  EXPECT_EQ(GetModuleHandleW(L"Größe ö.dll"), nullptr);
  EXPECT_FALSE(IsPlaceKept());
  EXPECT_EQ(Register(path, false), 0);
  EXPECT_EQ(RegisteredLibrary(), "");
  EXPECT_EQ(TextOf(kProgId), "");
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(libraries_.limits(), ElementsAre(10000U, 10000U));
}

TEST_F(RealSelfRegistration, LibraryThatMayNotWriteTheMachinesClassesHasRun) {
  RefuseKey(kClass);
  EXPECT_EQ(Register(CopyComponent("refused.dll")), 0);
  EXPECT_EQ(RegisteredLibrary(), "");
  EXPECT_EQ(libraries_.exit_codes(), std::vector{static_cast<std::uint32_t>(E_ACCESSDENIED)});
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RealSelfRegistration, LibraryThatFailsHasRun) {
  EXPECT_EQ(Register(Copy("OvlRefusing")), 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RealSelfRegistration, LibraryWithoutTheFunctionHasRun) {
  EXPECT_EQ(Register(Copy("OvlMute")), 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RealSelfRegistration, LibraryThatCrashesHasRun) {
  EXPECT_EQ(Register(Copy("OvlCrashing")), 0);
  EXPECT_EQ(Register(Copy("OvlThrowing")), 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RealSelfRegistration, LibraryThatUsesComIsInAnApartment) {
  EXPECT_EQ(Register(Copy("OvlComUser")), 0);
  EXPECT_EQ(libraries_.exit_codes(), std::vector<std::uint32_t>{0});
}

TEST_F(RealSelfRegistration, LibraryThatSetsAFilterOfItsOwnAndCrashesHasRun) {
  EXPECT_EQ(Register(Copy("OvlFiltering")), 0);
  EXPECT_EQ(libraries_.exit_codes(), std::vector<std::uint32_t>{0xC0000005U});
  EXPECT_EQ(Register(Copy("OvlCrashing")), 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RealSelfRegistration, ProgramOutlivesAThreadThatALibraryLeftInItsCode) {
  const SlowLibrary may_return;
  const ThreadsOfThisProcess before;
  EXPECT_EQ(Register(Copy("OvlLingering")), 0);
  EXPECT_EQ(GetModuleHandleW(L"OvlLingering.dll"), nullptr);
  EXPECT_TRUE(IsPlaceKept());
  const std::vector<platform::win32::UniqueKernelObject> left = before.Newer();
  ASSERT_EQ(left.size(), 1U);
  may_return.LetReturn();
  EXPECT_EQ(WaitForSingleObject(left[0].get(), kLong), WAIT_OBJECT_0);
  DWORD code = 0;
  GetExitCodeThread(left[0].get(), &code);
  EXPECT_EQ(code, 0xC0000005U);
}

TEST_F(RealSelfRegistration, WhatCannotBeLoadedIsLoggedWithTheSystemsNumber) {
  const std::string text = folder_.path() + "\\text.dll";
  platform::win32::MakeFiles()->Create(text, "no library");
  EXPECT_EQ(Register(text), 1);
  EXPECT_EQ(Register(folder_.path() + "\\missing.dll"), 1);
  EXPECT_EQ(Register(Copy("OvlNeedy")), 1);
  EXPECT_EQ(Register("kernel32.dll"), 1);
  EXPECT_THAT(
      Logged(),
      ElementsAre("193 Kitbay::Loading of library failed", "126 Kitbay::Loading of library failed",
                  "126 Kitbay::Loading of library failed", "75 Kitbay::Loading of library failed"));
  EXPECT_THAT(libraries_.limits(), IsEmpty());
}

TEST_F(RealSelfRegistration, LibraryThatCrashesAsItIsLoadedIsNotLoaded) {
  EXPECT_EQ(Register(Copy("OvlStillborn")), 1);
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, " Kitbay::Loading of library failed");
  EXPECT_THAT(libraries_.limits(), IsEmpty());
}

TEST_F(RealSelfRegistration, ProgramOutlivesALibraryThatTimedOut) {
  const SlowLibrary slow_library;
  const std::string slow = Copy("OvlSlow");
  libraries_.SetPatience(100);
  EXPECT_EQ(Register(slow), 3);
  EXPECT_THAT(libraries_.limits(), ElementsAre(10000U));
  EXPECT_EQ(GetModuleHandleW(L"OvlSlow.dll"), nullptr);
  EXPECT_TRUE(IsPlaceKept());
  const platform::ThreadHandle thread = libraries_.last_thread();
  EXPECT_EQ(libraries_.ExitCode(thread), platform::kNoExitCode);

  libraries_.SetPatience(kLong);
  const std::string other = CopyComponent("other.dll");
  EXPECT_EQ(Register(other), 0);
  EXPECT_EQ(RegisteredLibrary(), other);
  EXPECT_EQ(Register(slow), 3);
  EXPECT_THAT(Logged(), ElementsAre("75Kitbay::DLLRegisterService"));

  slow_library.LetReturn();
  EXPECT_TRUE(libraries_.Wait(thread, kLong));
  EXPECT_EQ(libraries_.ExitCode(thread), 0xC0000005U);
  EXPECT_EQ(Register(other, false), 0);
  EXPECT_EQ(RegisteredLibrary(), "");
  libraries_.Close(thread);
}

TEST_F(RealSelfRegistration, ListIsRegisteredToItsEndWhateverHappens) {
  CopyComponent("last.dll");
  Copy("OvlMute");
  Copy("OvlCrashing");
  session_.libraries = {"missing.dll", "OvlMute.dll", "OvlCrashing.dll", "last.dll"};
  EXPECT_TRUE(registration_.funcRegisterDll(folder_.path()));
  EXPECT_EQ(RegisteredLibrary(), folder_.path() + "\\last.dll");
  EXPECT_THAT(Logged(), ElementsAre("126 Kitbay::Loading of library failed"));
}

}  // namespace
}  // namespace kitbay::contract
