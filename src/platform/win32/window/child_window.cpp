#include "platform/win32/window/child_window.h"

#include <commctrl.h>

#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

HWND CreateChildWindow(HWND parent, const ChildWindow& control) {
  const HWND window = CreateWindowExW(control.extended_style, control.window_class, control.caption,
                                      WS_CHILD | control.style, 0, 0, 0, 0, parent,
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)),
                                      GetModuleHandleW(nullptr), nullptr);
  const DWORD error = GetLastError();
  if (window == nullptr) throw FailureOf(HRESULT_FROM_WIN32(error));
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
