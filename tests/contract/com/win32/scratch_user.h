#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "platform/win32/system/handles.h"

namespace kitbay::contract {

/// Replaces the user's registry by an empty key, only for this process and as long as it lives.
class ScratchUser {
 public:
  ScratchUser() {
    if (RegCreateKeyExW(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        key_.put(), nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, key_.get()) != ERROR_SUCCESS) {
      throw std::runtime_error("no registry key for the test");
    }
  }
  ~ScratchUser() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
  }
  ScratchUser(const ScratchUser&) = delete;
  ScratchUser& operator=(const ScratchUser&) = delete;

 private:
  std::wstring name_ = L"Software\\Kitbay.Tests " + std::to_wstring(GetCurrentProcessId());
  platform::win32::UniqueRegistryKey key_;
};

}  // namespace kitbay::contract
