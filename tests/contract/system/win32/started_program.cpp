// The program that the tests start. If it was started to be shown normally, and by its whole path,
// it sets the event with its own name, unless the environment tells it not to.
#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>

#include "platform/win32/system/handles.h"

namespace {

std::wstring FirstWordOfTheCommandLine() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  return words && count > 0 ? *words : L"";
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*command_line*/,
                   int /*show*/) {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  wchar_t program[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  if (GetEnvironmentVariableW(L"KITBAY_TESTS_SILENCE", nullptr, 0) != 0) {
    return 1;
  }
  const std::wstring path = program;
  const kitbay::platform::win32::UniqueKernelObject started(
      OpenEventW(EVENT_MODIFY_STATE, FALSE, path.substr(path.rfind(L'\\') + 1).c_str()));
  const bool normally =
      (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_SHOWNORMAL;
  const bool is_whole = FirstWordOfTheCommandLine() == program;
  return normally && is_whole && started && SetEvent(started.get()) ? 0 : 1;
}
