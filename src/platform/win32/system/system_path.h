#pragma once

#include <string>

namespace kitbay::platform::win32 {

/// The full path that `path` (UTF-8, "\" or "/", perhaps relative) stands for, as the system's
/// functions take it at any length. Without a separator at its end, unless it is a root.
/// Throws `base::Failure`: 76 for an empty path, 75 for the name of a device.
std::wstring ToSystemPath(const std::string& path);

}  // namespace kitbay::platform::win32
