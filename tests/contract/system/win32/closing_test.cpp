#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>

#include "contract/windows/patience.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// Another program that gets the close message, and what it does until it ends.
namespace kitbay::platform::win32 {
namespace {

/// The program of lingering_program.cpp, with its window on the screen.
class LingeringProgram {
 public:
  LingeringProgram() {
    ResetEvent(may_end_.get());
    ResetEvent(shown_.get());
    const std::wstring path =
        ToUtf16(FindProgramPlace().folder + "\\kitbay_contract_lingering.exe");
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    if (CreateProcessW(path.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &started)) {
      process_.reset(started.hProcess);
      CloseHandle(started.hThread);
      EXPECT_EQ(WaitForSingleObject(shown_.get(), contract::kPatienceMs), WAIT_OBJECT_0);
    }
  }
  ~LingeringProgram() {
    LetEnd();
    EXPECT_EQ(WaitForSingleObject(process_.get(), contract::kPatienceMs), WAIT_OBJECT_0);
  }
  LingeringProgram(const LingeringProgram&) = delete;
  LingeringProgram& operator=(const LingeringProgram&) = delete;

  void LetEnd() const { SetEvent(may_end_.get()); }
  bool HasEnded() const { return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }

 private:
  UniqueKernelObject may_end_{CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.MayEnd")};
  UniqueKernelObject shown_{CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Shown")};
  UniqueKernelObject process_;
};

TEST(Win32Closing, AProgramHasEndedAfterwardsThoughItSendsMessagesOnItsWay) {
  const HWND waiting = CreateWindowExW(0, L"Static", L"Kitbay.Tests.Waiting", WS_OVERLAPPED, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(waiting, nullptr);
  const LingeringProgram program;
  program.LetEnd();
  const auto desktop = MakeDesktop();
  desktop->SendClose(desktop->FindTopWindow("Kitbay.Tests.Lingering", "Lingering"));
  EXPECT_TRUE(program.HasEnded());
  DestroyWindow(waiting);
}

TEST(Win32Closing, AProgramThatDoesNotEndIsNotWaitedForForEver) {
  const LingeringProgram program;
  const auto desktop = MakeDesktop();
  const auto window = desktop->FindTopWindow("Kitbay.Tests.Lingering", "Lingering");
  auto sent = std::async(std::launch::async, [&] { desktop->SendClose(window); });
  EXPECT_EQ(sent.wait_for(std::chrono::seconds(60)), std::future_status::ready);
  EXPECT_FALSE(program.HasEnded());
}

}  // namespace
}  // namespace kitbay::platform::win32
