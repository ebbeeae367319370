#include "platform/win32/system/system_failure.h"

#include <windows.h>

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

}  // namespace kitbay::platform::win32
