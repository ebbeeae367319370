// Takes as long as OvlSlow.dll, while a thread of its own is running.
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
  WaitForSingleObject(worker, INFINITE);
  CloseHandle(worker);
  CloseHandle(may_return);
  return S_OK;
}
