#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/error_log.h"
#include "platform/files.h"

namespace kitbay::install {

class ZipArchive;

/// Brings the files of a component's package into their folder.
class PackageExpansion {
 public:
  PackageExpansion(base::ErrorLog& log, platform::Files& files) : log_(log), files_(files) {}

  /// Expands every file of the archive under `destination`, which ends in "\" afterwards whatever
  /// becomes of the rest. Folders are made as needed, existing files replaced; empty files and
  /// folders are left out. Returns whether the archive was opened and walked to its end; an archive
  /// that is missing is told by the result alone.
  ///
  /// Nothing is ever written outside of the destination: an entry whose name could lead there, that
  /// is neither stored nor deflated, or that this machine has no memory for, is logged, and nothing
  /// at all is written then. A file that cannot be written is logged and the walk goes on; damage
  /// within an entry is not looked for. One that is in use is replaced if it can be renamed, and
  /// otherwise tried again for about a second.
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
};

}  // namespace kitbay::install
