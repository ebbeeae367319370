#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace kitbay::install {

/// Checks whether the entries of an archive stay below a destination. Names have "\" between their
/// parts. What is found on disk is remembered, so that each folder is checked once.
class EntryNames {
 public:
  /// `destination` ends in "\".
  EntryNames(const platform::Files& files, std::string destination);

  /// Throws `base::Failure` (75) with the name, unless each part of it is a plain file name that
  /// Windows keeps unchanged. The name of a folder may end in "\".
  static void DemandPlain(const std::string& name, bool is_folder);

  /// Throws `base::Failure` (75) with the name if a part of it is a link on disk: what is written
  /// below it would end up elsewhere.
  void DemandNoLink(const std::string& name);

 private:
  enum class Found { kNothing, kPlain, kLink };

  Found Look(const std::string& path);

  const platform::Files& files_;
  std::string destination_;
  std::map<std::string, Found> found_;  ///< what was found at the folders checked so far
};

/// `name` as it can appear in a line of the log: with "?" for each control character, and for each
/// byte of a name that is not UTF-8.
std::string Printable(const std::string& name);

}  // namespace kitbay::install
