#pragma once

#include <string>

namespace kitbay::platform::win32 {

/// The full path that `path` (UTF-8, "\" or "/", possibly relative) stands for, in the form that
/// the system's functions accept at any length. It has no separator at its end, unless it is a
/// root. Throws `base::Failure`: 76 for an empty path, 75 for the name of a device.
std::wstring ToSystemPath(const std::string& path);

}  // namespace kitbay::platform::win32
