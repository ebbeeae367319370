#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// Registers the class `name` of the program's own windows: with the executable's icon (the
/// system's own where it has none) and the colour of dialogs. `extra_bytes` is what each window
/// keeps beside its own data. A class that is registered already stays; throws `base::Failure` with
/// an HRESULT when the system refuses.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, int extra_bytes = 0);

}  // namespace kitbay::platform::win32
