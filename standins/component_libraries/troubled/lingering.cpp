// Returns at once, but leaves a thread running in its code until the session's event
// "OvlSlow.Return" is set.
#include <windows.h>

namespace {

DWORD WINAPI Work(void* may_return) {
  constexpr DWORD kFifteenSeconds = 15000;
  return WaitForSingleObject(may_return, kFifteenSeconds) == WAIT_OBJECT_0 ? 0 : 1;
}

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  const HANDLE may_return = CreateEventW(nullptr, TRUE, FALSE, L"OvlSlow.Return");
  const HANDLE worker = CreateThread(nullptr, 0, &Work, may_return, 0, nullptr);
  CloseHandle(worker);
  return S_OK;
}
