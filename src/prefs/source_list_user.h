#pragma once

#include <string>

namespace kitbay::prefs {

/// Works with the update sources, and is told when there are new ones, or when there should be.
class SourceListUser {
 public:
  virtual ~SourceListUser() = default;

  /// Reads the update sources again and asks them.
  virtual void GetDirectoryPreferenceFile() = 0;

  /// A change that the user made could not be saved.
  virtual void TellNotSaved() = 0;

  /// The user has added `url`, whose manifest has the file name of that of `other`: each of the two
  /// replaces the other.
  virtual void TellSameName(const std::string& url, const std::string& other) = 0;
};

}  // namespace kitbay::prefs
