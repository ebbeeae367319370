#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// The arguments of this program, without its own name, in UTF-8.
std::vector<std::string> StartWords();

/// Whether the program's standard error is a console.
bool IsErrorShown();

/// As long as it lives, the console reads the program's output as UTF-8.
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
