// Returns at once, but leaves a thread waiting in its code until the session's event
// "OvlSlow.Return" is set.
#include <windows.h>

namespace {

struct Events {
  HANDLE is_waiting;
  HANDLE may_return;
};

// The thread waits in the system's code before anybody learns that it does: it next runs this code
// when it may return, by then without the library.
DWORD WINAPI Work(void* context) {
  const Events events = *static_cast<Events*>(context);
  return SignalObjectAndWait(events.is_waiting, events.may_return, INFINITE, FALSE);
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
