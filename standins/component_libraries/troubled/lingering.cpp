// Returns at once, but leaves a thread waiting in its code until the session's event
// "OvlSlow.Return" is set.
#include <windows.h>

namespace {

struct Events {
  HANDLE is_waiting;
  HANDLE may_return;
};

// The thread waits in the system's code before anybody learns that it does, and returns into this
// code, by then without the library: the comparison keeps the call from becoming a jump.
DWORD WINAPI Work(void* context) {
  const Events events = *static_cast<Events*>(context);
  const DWORD outcome = SignalObjectAndWait(events.is_waiting, events.may_return, INFINITE, FALSE);
  return outcome == WAIT_OBJECT_0 ? 0 : 1;
}

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  Events events = {CreateEventW(nullptr, TRUE, FALSE, nullptr),
                   CreateEventW(nullptr, TRUE, FALSE, L"OvlSlow.Return")};
  const HANDLE worker = CreateThread(nullptr, 0, &Work, &events, 0, nullptr);
  WaitForSingleObject(events.is_waiting, INFINITE);
  CloseHandle(events.is_waiting);
  CloseHandle(worker);
  return S_OK;
}
