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

/// Carries out the command line `words` and returns the exit code. Writes results to `out`, and
/// failures and progress to `err`.
int Run(const std::vector<std::string>& words, std::chrono::sys_days today, std::ostream& out,
        std::ostream& err);

}  // namespace kitbay::source_tool
