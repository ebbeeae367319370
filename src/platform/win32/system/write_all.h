#pragma once

#include <windows.h>

#include <string_view>

namespace kitbay::platform::win32 {

/// Writes all of `bytes` at the file's position. Throws `base::Failure` as a file operation does.
void WriteAll(HANDLE file, std::string_view bytes);

}  // namespace kitbay::platform::win32
