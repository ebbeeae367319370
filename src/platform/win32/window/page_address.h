#pragma once

#include <string_view>

namespace kitbay::platform::win32 {

/// Whether `address`, as a browser control reports it, names the file at `path`. The address may be
/// a path itself or a "file:" URL, with or without percent escapes. Slashes count as backslashes,
/// letters A to Z as their small ones; a part after "#" or "?" makes another address. UTF-8.
bool IsAddressOfFile(std::string_view address, std::string_view path);

}  // namespace kitbay::platform::win32
