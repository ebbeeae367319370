#pragma once

#include <windows.h>

#include <array>

namespace kitbay::contract {

/// Holds down a key, such as VK_SHIFT, for this thread.
class KeyHeld {
 public:
  explicit KeyHeld(int key) : key_(static_cast<std::size_t>(key)) { Set(0x80); }
  ~KeyHeld() { Set(0); }
  KeyHeld(const KeyHeld&) = delete;
  KeyHeld& operator=(const KeyHeld&) = delete;

 private:
  void Set(BYTE state) const {
    std::array<BYTE, 256> keys{};
    GetKeyboardState(keys.data());
    keys[key_] = state;
    SetKeyboardState(keys.data());
  }

  std::size_t key_;
};

}  // namespace kitbay::contract
