#pragma once

#include <windows.h>

namespace kitbay::web_browser {

/**
 * Creates a window whose procedure finds its owner by OwnerOf. The first call registers the class.
 * Throws std::runtime_error if Windows refuses.
 */
HWND CreateOwnedWindow(const wchar_t* class_name, UINT class_style, WNDPROC procedure, HWND parent,
                       DWORD style, const RECT& place, void* owner);

/** The owner given when the window was created; nullptr before the window has received it. */
template <typename Owner>
Owner* OwnerOf(HWND window, UINT message, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  return reinterpret_cast<Owner*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

}  // namespace kitbay::web_browser
