// Stands in for the suite's main client: shows a contact list until it gets the close message. If a
// file "Tessel.saves" lies beside it, it saves the datastore late, after its window has closed.

#include <windows.h>

#include "contact_list.h"
#include "event_log.h"
#include "late_saving.h"

namespace {

constexpr wchar_t kWindowClass[] = L"ThunderRT6FormDC";
constexpr wchar_t kCaption[] = L"OvlTessel";
constexpr int kWidth = 320;
constexpr int kHeight = 440;

// The contact list is placed at the right edge of the screen, where it hides no other window.
POINT FirstPlace() {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  return {work.right - kWidth, work.top};
}

LRESULT CALLBACK MainWindow(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CREATE: {
      const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
      SetWindowLongPtrW(window, GWLP_USERDATA,
                        reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      const auto* contacts =
          reinterpret_cast<const ContactList*>(GetWindowLongPtrW(window, GWLP_USERDATA));
      PAINTSTRUCT paint;
      const HDC target = BeginPaint(window, &paint);
      RECT area;
      GetClientRect(window, &area);
      contacts->Paint(target, area);
      EndPaint(window, &paint);
      return 0;
    }
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  ContactList contacts;
  const LateSaving saving;
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = MainWindow;
  window_class.hInstance = instance;
  window_class.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
  window_class.lpszClassName = kWindowClass;
  if (!RegisterClassExW(&window_class)) {
    return 1;
  }

  const POINT place = FirstPlace();
  const HWND window =
      CreateWindowExW(0, kWindowClass, kCaption, WS_OVERLAPPEDWINDOW, place.x, place.y, kWidth,
                      kHeight, nullptr, nullptr, instance, &contacts);
  if (!window) {
    return 1;
  }
  ShowWindow(window, show);
  AppendToEventLog("started");

  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  saving.Save();
  AppendToEventLog("closed");
  return 0;
}
