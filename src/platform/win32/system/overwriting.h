#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kitbay::platform::win32 {

/// The attributes of the file that is about to be overwritten; those of a new file when there is
/// none. `path` is one of `ToSystemPath`. Throws `base::Failure` (70) when it is a folder or
/// read-only, whatever rights the user has.
DWORD DemandOverwritable(const std::wstring& path);

/// Writes all of `bytes` at the file's position. Throws `base::Failure` as a file operation does.
void WriteAll(HANDLE file, std::string_view bytes);

}  // namespace kitbay::platform::win32
