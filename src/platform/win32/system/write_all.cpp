#include "platform/win32/system/write_all.h"

#include <algorithm>
#include <limits>

#include "platform/win32/system/system_failure.h"

namespace kitbay::platform::win32 {

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
