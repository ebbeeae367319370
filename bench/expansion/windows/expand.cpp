// expand_on_windows ARCHIVE FOLDER
// Expands an archive into a folder as Kitbay does on Windows, and prints how many milliseconds that
// took.
#include <chrono>
#include <cstdio>
#include <string>

#include "install/package_expansion.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"
#include "printed_log.h"

namespace win32 = kitbay::platform::win32;

int wmain(int count, wchar_t** words) {
  if (count != 3) {
    return 2;
  }
  kitbay::bench::PrintedLog log;
  const auto files = win32::MakeFiles();
  std::string destination = win32::ToUtf8(words[2]);
  const auto start = std::chrono::steady_clock::now();
  const bool expanded = kitbay::install::PackageExpansion(log, *files)
                            .ExpandZipFile(destination, win32::ToUtf8(words[1]));
  const std::chrono::duration<double, std::milli> lasted = std::chrono::steady_clock::now() - start;
  std::printf("%.0f\n", lasted.count());
  return expanded && !log.has_entries ? 0 : 1;
}
