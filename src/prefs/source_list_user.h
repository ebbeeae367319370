#pragma once

#include <string>

namespace kitbay::prefs {

/// Works with the update sources; is notified of new sources and of problems with them.
class SourceListUser {
 public:
  virtual ~SourceListUser() = default;

  /// Reads the update sources again and asks them.
  virtual void GetDirectoryPreferenceFile() = 0;

  /// A change that the user made could not be saved.
  virtual void TellNotSaved() = 0;

  /// The user has added `url`, whose manifest has the same file name as that of `other`, so the two
  /// manifests replace each other.
  virtual void TellSameName(const std::string& url, const std::string& other) = 0;
};

}  // namespace kitbay::prefs
