#pragma once

namespace ovalink {

/// Keeps the library loaded: every object holds one.
class ModuleLock {
 public:
  ModuleLock() { Hold(true); }
  ~ModuleLock() { Hold(false); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;

  /// Takes one lock more, or gives one back.
  static void Hold(bool hold);

  /// Whether nothing keeps the library loaded.
  static bool CanUnload();
};

}  // namespace ovalink
