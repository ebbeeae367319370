#pragma once

#include <filesystem>
#include <string>

namespace kitbay::contract {

/// A folder for the pages of a test program, deleted at the end with everything in it.
class PageFiles {
 public:
  PageFiles();
  ~PageFiles();
  PageFiles(const PageFiles&) = delete;
  PageFiles& operator=(const PageFiles&) = delete;

  /// Writes a page under a name not used before, and returns its path.
  std::string Write(const std::string& markup);

  /// Writes the file `name` beside the pages, and returns its path.
  std::string WriteAs(const std::string& name, const std::string& content);

 private:
  std::filesystem::path folder_;
  int count_ = 0;
};

}  // namespace kitbay::contract
