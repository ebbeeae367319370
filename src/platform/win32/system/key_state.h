#pragma once

#include <windows.h>

namespace kitbay::platform::win32 {

/// Whether the key is down, as of the message being handled.
inline bool IsDown(int key) { return GetKeyState(key) < 0; }

}  // namespace kitbay::platform::win32
