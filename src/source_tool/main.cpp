#include <unistd.h>

#include <iostream>

#include "source_tool/commands.h"

int main(int count, char** words) {
  return kitbay::source_tool::Run(
      {words + 1, words + count},
      {.out = std::cout, .err = std::cerr, .is_err_shown = isatty(STDERR_FILENO) != 0});
}
