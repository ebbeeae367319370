#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace kitbay::source_tool {

/// What the program ends with.
inline constexpr int kDone = 0;    ///< all was done, and nothing was found
inline constexpr int kFound = 1;   ///< there are findings
inline constexpr int kUsage = 2;   ///< the words are not what the command takes
inline constexpr int kFailed = 3;  ///< a file could not be read or written

/// Does what the program's words say; returns what it ends with. Results go to `out`; what failed,
/// and how far long work has come, to `err`.
int Run(const std::vector<std::string>& words, std::chrono::sys_days today, std::ostream& out,
        std::ostream& err);

}  // namespace kitbay::source_tool
