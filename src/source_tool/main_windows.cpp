#include <iostream>

#include "platform/win32/system/console.h"
#include "source_tool/commands.h"

// The arguments of main() lack the letters that the system's code page lacks.
int main() {
  namespace win32 = kitbay::platform::win32;
  const win32::Utf8Console console;
  return kitbay::source_tool::Run(
      win32::StartWords(),
      {.out = std::cout, .err = std::cerr, .is_err_shown = win32::IsErrorShown()});
}
