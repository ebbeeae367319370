// Takes 15 seconds to register itself, or until the session's event "OvlSlow.Return" is set.
#include <windows.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  constexpr DWORD kFifteenSeconds = 15000;
  const HANDLE may_return = CreateEventW(nullptr, TRUE, FALSE, L"OvlSlow.Return");
  WaitForSingleObject(may_return, kFifteenSeconds);
  CloseHandle(may_return);
  return S_OK;
}
