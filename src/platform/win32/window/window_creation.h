#pragma once

#include <windows.h>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// Registers the class `name` for the program's own windows, with the executable's icon (the
/// system's if it has none) and the colour of dialogs. `extra_bytes` is what each window stores
/// besides its own data. A class that is already registered stays as it is. Throws `base::Failure`
/// with an HRESULT if the system refuses.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, int extra_bytes = 0);

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
