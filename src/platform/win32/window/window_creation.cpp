#include "platform/win32/window/window_creation.h"

#include <commctrl.h>

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, int extra_bytes) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = procedure;
  description.cbWndExtra = extra_bytes;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = LoadIconW(description.hInstance, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
  description.lpszClassName = name;
  const ATOM atom = RegisterClassExW(&description);
  const DWORD error = GetLastError();
  if (atom == 0 && error != ERROR_CLASS_ALREADY_EXISTS) {
    throw FailureOf(HRESULT_FROM_WIN32(error));
  }
}

HWND CreateChildWindow(HWND parent, const ChildWindow& control) {
  const HWND window = CreateWindowExW(control.extended_style, control.window_class, control.caption,
                                      WS_CHILD | control.style, 0, 0, 0, 0, parent,
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)),
                                      GetModuleHandleW(nullptr), nullptr);
  const DWORD error = GetLastError();
  if (window == nullptr) {
    throw FailureOf(HRESULT_FROM_WIN32(error));
  }
  return window;
}

HWND CreateButton(HWND parent, int id, const wchar_t* caption) {
  return CreateChildWindow(parent, {.window_class = WC_BUTTONW,
                                    .caption = caption,
                                    .style = WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                                    .id = id});
}

void PlaceChildWindow(HWND window, const Rectangle& place) {
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace kitbay::platform::win32
