// The program that the tests start. If it was started to be shown normally, it sets the event that
// the environment names or, by default, the event with its own name.
#include <windows.h>

#include <string>

#include "platform/win32/system/handles.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*command_line*/,
                   int /*show*/) {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  wchar_t name[MAX_PATH] = L"";
  if (GetEnvironmentVariableW(L"KITBAY_TESTS_EVENT", name, MAX_PATH) == 0) {
    GetModuleFileNameW(nullptr, name, MAX_PATH);
  }
  const std::wstring path = name;
  const kitbay::platform::win32::UniqueKernelObject started(
      OpenEventW(EVENT_MODIFY_STATE, FALSE, path.substr(path.rfind(L'\\') + 1).c_str()));
  const bool normally =
      (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_SHOWNORMAL;
  return normally && started && SetEvent(started.get()) ? 0 : 1;
}
