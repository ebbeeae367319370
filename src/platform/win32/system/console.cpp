#include "platform/win32/system/console.h"

#include <shellapi.h>

#include <memory>

#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {

std::vector<std::string> StartWords() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  std::vector<std::string> result;
  for (int i = 1; words && i < count; ++i) {
    result.push_back(ToUtf8(words.get()[i]));
  }
  return result;
}

bool IsErrorShown() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

}  // namespace kitbay::platform::win32
