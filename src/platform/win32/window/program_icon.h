#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// The icon of the executable, for the class of a window; the system finds the small one in it.
/// Null where the executable has none, and the window then shows the system's own.
inline HICON ProgramIcon() { return LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1)); }

}  // namespace kitbay::platform::win32
