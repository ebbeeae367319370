#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// The words that this program was started with, behind its own name, in UTF-8.
std::vector<std::string> StartWords();

/// Whether somebody reads on a console what the program writes to its standard error.
bool IsErrorShown();

/// As long as it lives, the console takes what the program writes for UTF-8.
class Utf8Console {
 public:
  Utf8Console() { SetConsoleOutputCP(CP_UTF8); }
  ~Utf8Console() { SetConsoleOutputCP(before_); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  UINT before_ = GetConsoleOutputCP();
};

}  // namespace kitbay::platform::win32
