// A program that takes its time to end: it closes its window on the close message, sends a message
// to whoever waits, and ends once the session's event "Kitbay.Tests.MayEnd" is set.
#include <windows.h>

namespace {

LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

HANDLE OpenNamed(const wchar_t* name) { return CreateEventW(nullptr, TRUE, FALSE, name); }

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, PWSTR /*words*/, int /*show*/) {
  const HANDLE may_end = OpenNamed(L"Kitbay.Tests.MayEnd");
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = &Handle;
  window_class.hInstance = instance;
  window_class.lpszClassName = L"Kitbay.Tests.Lingering";
  RegisterClassW(&window_class);
  CreateWindowExW(0, window_class.lpszClassName, L"Lingering", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                  0, 200, 100, nullptr, nullptr, instance, nullptr);
  SetEvent(OpenNamed(L"Kitbay.Tests.Shown"));
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
  }
  SendMessageW(FindWindowW(L"Static", L"Kitbay.Tests.Waiting"), WM_GETTEXTLENGTH, 0, 0);
  WaitForSingleObject(may_end, INFINITE);
  return 0;
}
