#pragma once

#include <windows.h>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// A control to be created.
struct ChildWindow {
  const wchar_t* window_class;
  const wchar_t* caption = L"";
  DWORD style = WS_VISIBLE;  ///< in addition to WS_CHILD
  DWORD extended_style = 0;
  int id = 0;
};

/// Creates the control in `parent`, with which it is destroyed. Throws `base::Failure` with the
/// HRESULT on failure.
HWND CreateChildWindow(HWND parent, const ChildWindow& control);

/// A push button that Tab reaches.
HWND CreateButton(HWND parent, int id, const wchar_t* caption);

/// Moves the control to its place in its parent.
void PlaceChildWindow(HWND window, const Rectangle& place);

}  // namespace kitbay::platform::win32
