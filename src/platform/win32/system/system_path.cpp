#include "platform/win32/system/system_path.h"

#include <windows.h>

#include "base/failure.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {
namespace {

// Folders must leave room for a short file name within MAX_PATH.
constexpr std::size_t kShortEnough = MAX_PATH - 13;

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    const DWORD error = GetLastError();
    if (length == 0) {
      throw FileFailure(error);
    }
    const bool fits = length < full.size();
    full.resize(length);
    if (fits) {
      return full;
    }
  }
}

bool IsRoot(const std::wstring& path) { return path.size() == 3 && path[1] == L':'; }

}  // namespace

std::wstring ToSystemPath(const std::string& path) {
  // A NUL would cut off the path and so name another file.
  if (path.find('\0') != std::string::npos) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError);
  }
  if (path.empty()) {
    throw base::Failure(base::RuntimeError::kPathNotFound);
  }
  std::wstring full = FullPath(ToUtf16(path));
  if (full.starts_with(L"\\\\.\\")) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError);
  }
  while (full.ends_with(L'\\') && !IsRoot(full)) {
    full.pop_back();
  }
  if (full.size() < kShortEnough || full.starts_with(L"\\\\?\\")) {
    return full;
  }
  return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

}  // namespace kitbay::platform::win32
