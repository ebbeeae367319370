#pragma once

namespace ovalink {

/// Keeps the library loaded; every object has one.
class ModuleLock {
 public:
  ModuleLock() { Hold(true); }
  ~ModuleLock() { Hold(false); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;

  /// Adds a lock, or releases one.
  static void Hold(bool hold);

  /// Keeps the library loaded until the process ends, for callbacks that the system makes after
  /// their object is gone.
  static void Pin();

  /// Whether nothing keeps the library loaded any more.
  static bool CanUnload();
};

}  // namespace ovalink
