#pragma once

#include <string>

namespace kitbay::contract {

/// A new, empty folder below the user's folder of temporary files, deleted at the end with
/// everything in it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Without a separator at its end.
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace kitbay::contract
