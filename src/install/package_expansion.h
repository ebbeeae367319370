#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/error_log.h"
#include "platform/files.h"

namespace kitbay::install {

class ZipArchive;

/// Expands the files of a component's package into their folder.
class PackageExpansion {
 public:
  PackageExpansion(base::ErrorLog& log, platform::Files& files) : log_(log), files_(files) {}

  /// Expands every file of the archive below `destination`, which ends in "\" afterwards, whatever
  /// the outcome. Creates folders as needed and replaces existing files; leaves out empty files and
  /// folders. Returns whether the archive was opened and read to its end; only this result reports
  /// a missing archive.
  ///
  /// Nothing is ever written outside the destination. An entry whose name could lead there, that is
  /// neither stored nor deflated, or that this machine has no memory for, is logged, and then
  /// nothing at all is written. A file that cannot be written is logged and the expansion goes on.
  /// Damage within an entry is not detected. A file in use is replaced if it can be renamed, and
  /// otherwise retried for about a second.
  bool ExpandZipFile(std::string& destination, const std::string& archive_path);

  /// The names of the entries whose files the last expansion could not write.
  const std::vector<std::string>& unwritten() const { return unwritten_; }

 private:
  bool ExpandInto(const std::string& destination, const std::string& archive_path);
  void ExpandEntry(ZipArchive& archive, const std::string& destination, std::span<char> buffer);
  void Write(const std::string& path, std::string_view bytes);
  void MakeFolders(const std::string& destination, const std::string& name);

  base::ErrorLog& log_;
  platform::Files& files_;
  std::vector<std::string> unwritten_;
  std::string last_folder_;  // where the last entry is, below the destination; ends in "\"
};

}  // namespace kitbay::install
