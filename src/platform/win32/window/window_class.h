#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// Registers the class `name` for the program's own windows, with the executable's icon (the
/// system's if it has none) and the colour of dialogs. `extra_bytes` is what each window stores
/// besides its own data. A class that is already registered stays as it is. Throws `base::Failure`
/// with an HRESULT if the system refuses.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, int extra_bytes = 0);

}  // namespace kitbay::platform::win32
