#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace kitbay::install {

/// Judges whether the entries of an archive stay under a destination. Names have "\" between their
/// parts. What is found on disk is remembered, so that each folder is asked about once.
class EntryNames {
 public:
  /// `destination` ends in "\".
  EntryNames(const platform::Files& files, std::string destination);

  /// Throws `base::Failure` (75) with the name, unless each part of it is a plain file name that
  /// Windows keeps as it is. The name of a folder may end in "\".
  static void DemandPlain(const std::string& name, bool is_folder);

  /// Throws `base::Failure` (75) with the name when a part of it is on disk as a link: what is
  /// written under it would land elsewhere.
  void DemandNoLink(const std::string& name);

 private:
  enum class Found { kNothing, kPlain, kLink };

  Found Look(const std::string& path);

  const platform::Files& files_;
  std::string destination_;
  std::map<std::string, Found> found_;  ///< what lies at the folders looked at so far
};

/// `name` as it can stand in a line of the log: "?" for each control character, and for each byte
/// of a name that is no UTF-8.
std::string Printable(const std::string& name);

}  // namespace kitbay::install
