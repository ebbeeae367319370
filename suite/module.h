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

  /// Keeps the library loaded until the process ends, for callbacks that the system makes after
  /// their object has gone.
  static void Pin();

  /// Whether nothing keeps the library loaded.
  static bool CanUnload();
};

}  // namespace ovalink
