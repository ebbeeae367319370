#pragma once

#include <string_view>

namespace kitbay::platform::win32 {

/// Whether `address`, as a browser control reports it, names the file at `path`. The address may be
/// a path or a "file:" URL, with or without percent escapes. Slashes equal backslashes and A to Z
/// equal a to z; a part after "#" or "?" makes it a different address. UTF-8.
bool IsAddressOfFile(std::string_view address, std::string_view path);

}  // namespace kitbay::platform::win32
