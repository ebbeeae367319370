#pragma once

#include "platform/files.h"

namespace kitbay::platform {

/// Runs `step`, and repeats it ten times a second for about a second while it fails because another
/// program holds a file: a scanner or an indexer closes one in a moment.
template <typename Step>
auto WithPatience(const Files& files, Step step) {
  constexpr unsigned kPauseMs = 100;
  for (int pauses_left = 10;; --pauses_left) {
    try {
      return step();
    } catch (const FileInUse&) {
      if (pauses_left == 0) {
        throw;
      }
    }
    files.WaitForOthers(kPauseMs);
  }
}

}  // namespace kitbay::platform
