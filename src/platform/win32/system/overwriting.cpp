#include "platform/win32/system/overwriting.h"

#include <algorithm>
#include <limits>

#include "platform/win32/system/system_failure.h"

namespace kitbay::platform::win32 {

DWORD DemandOverwritable(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return FILE_ATTRIBUTE_NORMAL;
  }
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    throw FileFailure(ERROR_ACCESS_DENIED);
  }
  return attributes;
}

void WriteAll(HANDLE file, std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::numeric_limits<DWORD>::max();
  while (!bytes.empty()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data(), wanted, &written, nullptr)) {
      throw FileFailure(GetLastError());
    }
    if (written == 0) {
      throw FileFailure(ERROR_DISK_FULL);
    }
    bytes.remove_prefix(written);
  }
}

}  // namespace kitbay::platform::win32
