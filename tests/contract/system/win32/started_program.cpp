// The program that the tests start. It sets the event that the environment names when it was
// started to be shown normally.
#include <windows.h>

#include "platform/win32/system/handles.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*command_line*/,
                   int /*show*/) {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  wchar_t name[128] = L"";
  GetEnvironmentVariableW(L"KITBAY_TESTS_EVENT", name, 128);
  const kitbay::platform::win32::UniqueKernelObject started(
      OpenEventW(EVENT_MODIFY_STATE, FALSE, name));
  const bool normally =
      (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_SHOWNORMAL;
  return normally && started && SetEvent(started.get()) ? 0 : 1;
}
