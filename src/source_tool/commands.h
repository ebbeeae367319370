#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace kitbay::source_tool {

/// The program's exit codes.
inline constexpr int kDone = 0;    ///< everything was done, without findings
inline constexpr int kFound = 1;   ///< there are findings
inline constexpr int kUsage = 2;   ///< the arguments are wrong
inline constexpr int kFailed = 3;  ///< a file could not be read or written

/// Where the program runs.
struct Surroundings {
  std::ostream& out;          ///< for results
  std::ostream& err;          ///< for failures and progress
  bool is_err_shown = false;  ///< whether `err` is a terminal, which shows a progress bar
  std::chrono::sys_days today =
      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
};

/// Carries out the command line `words` and returns the exit code.
int Run(const std::vector<std::string>& words, const Surroundings& surroundings);

}  // namespace kitbay::source_tool
