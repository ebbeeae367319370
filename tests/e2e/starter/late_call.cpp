// Holds up the end of Kitbay and lets clients' calls in, as every call to another process does
// while it waits for the answer. The event "Kitbay.Tests.Ending" signals that the end has come that
// far; it goes on when a client sets "Kitbay.Tests.Answered", so that the process still exists when
// the client is answered.
#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <memory>

#include "contract/windows/replaced_import.h"

namespace {

// Windows and Wine post an arriving call to a window of the apartment.
constexpr const wchar_t* kApartmentWindow = L"OleMainThreadWndClass";
constexpr UINT kCall = WM_USER;

HRESULT WINAPI RevokeLater(DWORD cookie, void* reserved);

/// The program's call, which waits while the library is loaded.
std::unique_ptr<kitbay::contract::ReplacedImport>& Replaced() {
  static std::unique_ptr<kitbay::contract::ReplacedImport> replaced;
  return replaced;
}

HWND ApartmentWindow() {
  HWND window = nullptr;
  do {
    window = FindWindowExW(HWND_MESSAGE, window, kApartmentWindow, nullptr);
  } while (window != nullptr && GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId());
  return window;
}

HRESULT WINAPI RevokeLater(DWORD cookie, void* reserved) {
  const HANDLE is_answered = CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Answered");
  SetEvent(CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Ending"));
  const HWND window = ApartmentWindow();
  // One method takes several calls: a late-bound client first asks for its number.
  do {
    MSG message;
    while (PeekMessageW(&message, window, kCall, kCall, PM_REMOVE)) {
      DispatchMessageW(&message);
    }
  } while (MsgWaitForMultipleObjects(1, &is_answered, FALSE, INFINITE, QS_ALLPOSTMESSAGE) !=
           WAIT_OBJECT_0);
  CloseHandle(is_answered);
  return Replaced()->original(RevokeLater)(cookie, reserved);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    Replaced() = std::make_unique<kitbay::contract::ReplacedImport>(
        "RevokeActiveObject", reinterpret_cast<void*>(&RevokeLater));
  }
  return TRUE;
}
