#pragma once

namespace kitbay::prefs {

/// Works with the update sources, and is told when there are new ones.
class SourceListUser {
 public:
  virtual ~SourceListUser() = default;

  /// Reads the update sources again and asks them.
  virtual void GetDirectoryPreferenceFile() = 0;
};

}  // namespace kitbay::prefs
