#include "platform/win32/system/system_failure.h"

#include <windows.h>

#include <array>
#include <string_view>

#include "platform/files.h"
#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {

using base::Failure;
using base::RuntimeError;

Failure FileFailure(std::uint32_t error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
      return Failure(RuntimeError::kFileNotFound);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
      return Failure(RuntimeError::kPathNotFound);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_WRITE_PROTECT:
      return Failure(RuntimeError::kPermissionDenied);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return Failure(RuntimeError::kDiskFull);
    default:
      return Failure(RuntimeError::kPathFileAccessError);
  }
}

void RaiseFileFailure(std::uint32_t error) {
  if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
      error == ERROR_USER_MAPPED_FILE) {
    throw FileInUse();
  }
  throw FileFailure(error);
}

Failure SystemFailure(std::uint32_t error, const std::string& subject) {
  std::array<wchar_t, 512> text{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::string description = ToUtf8(std::wstring_view(text.data(), length));
  while (description.ends_with('\n') || description.ends_with('\r')) {
    description.pop_back();
  }
  constexpr std::string_view kInsert = "%1";
  if (const auto at = description.find(kInsert); at != std::string::npos) {
    description.replace(at, kInsert.size(), subject);
  }
  return {static_cast<std::int32_t>(error), description};
}

}  // namespace kitbay::platform::win32
