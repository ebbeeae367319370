#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// Whether the key is held, as of the message that is being handled.
inline bool IsDown(int key) { return GetKeyState(key) < 0; }

}  // namespace kitbay::platform::win32
