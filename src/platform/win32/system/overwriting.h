#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kitbay::platform::win32 {

/// The attributes of the file about to be overwritten, or those of a new file if there is none.
/// `path` comes from `ToSystemPath`. Throws `base::Failure` (70) if the file is a folder or
/// read-only, whatever rights the user has.
DWORD DemandOverwritable(const std::wstring& path);

/// Writes all of `bytes` at the file's position. Throws `base::Failure` as a file operation does.
void WriteAll(HANDLE file, std::string_view bytes);

}  // namespace kitbay::platform::win32
