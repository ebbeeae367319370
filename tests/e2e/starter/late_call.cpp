// Makes the end of Kitbay wait for a client's call and lets it in, as every call to another process
// does while it waits for the answer. The event "Kitbay.Tests.Ending" signals that the end has come
// that far.
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
  SetEvent(CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Ending"));
  const HWND window = ApartmentWindow();
  MSG message;
  while (!PeekMessageW(&message, window, kCall, kCall, PM_REMOVE)) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, INFINITE, QS_ALLPOSTMESSAGE);
  }
  DispatchMessageW(&message);
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
