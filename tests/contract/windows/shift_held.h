#pragma once

#include <windows.h>

#include <array>

namespace kitbay::contract {

/// Holds the Shift key down for this thread.
class ShiftHeld {
 public:
  ShiftHeld() { Set(0x80); }
  ~ShiftHeld() { Set(0); }
  ShiftHeld(const ShiftHeld&) = delete;
  ShiftHeld& operator=(const ShiftHeld&) = delete;

 private:
  static void Set(BYTE state) {
    std::array<BYTE, 256> keys{};
    GetKeyboardState(keys.data());
    keys[VK_SHIFT] = state;
    SetKeyboardState(keys.data());
  }
};

}  // namespace kitbay::contract
