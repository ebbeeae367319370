#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "source_tool/commands.h"

int main(int count, char** words) {
  return kitbay::source_tool::Run(
      {words + 1, words + count},
      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()), std::cout,
      std::cerr);
}
