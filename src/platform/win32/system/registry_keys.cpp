#include "platform/registry_keys.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

HKEY ToSystem(RegistryKey key) {
  // The system's own constants for the hives are the same 32 bits, sign-extended.
  if (key == kClassesRoot) {
    return HKEY_CLASSES_ROOT;
  }
  if (key == kCurrentUser) {
    return HKEY_CURRENT_USER;
  }
  return key == kLocalMachine ? HKEY_LOCAL_MACHINE : reinterpret_cast<HKEY>(key.handle);
}

RegistryKey FromSystem(HKEY key) { return {reinterpret_cast<std::uintptr_t>(key)}; }

struct RawValue {
  LSTATUS code = ERROR_SUCCESS;
  DWORD type = REG_NONE;
  std::wstring text;
};

RawValue ReadWhole(HKEY key, const std::wstring& name) {
  RawValue value;
  std::vector<BYTE> bytes(512);
  // Another program may write a longer value between two readings.
  do {
    auto size = static_cast<DWORD>(bytes.size());
    value.code = RegQueryValueExW(key, name.c_str(), nullptr, &value.type, bytes.data(), &size);
    bytes.resize(std::max<std::size_t>(size, 1));
    if (value.code == ERROR_SUCCESS) {
      value.text.assign(reinterpret_cast<const wchar_t*>(bytes.data()), size / sizeof(wchar_t));
    }
  } while (value.code == ERROR_MORE_DATA);
  return value;
}

class Win32RegistryKeys : public RegistryKeys {
 public:
  KeyResult Open(RegistryKey parent, const std::string& name, std::uint32_t access) override {
    HKEY key = nullptr;
    const LSTATUS code = RegOpenKeyExW(ToSystem(parent), ToUtf16(name).c_str(), 0, access, &key);
    return code == ERROR_SUCCESS ? KeyResult{code, FromSystem(key)} : KeyResult{code, {}};
  }

  KeyResult Create(RegistryKey parent, const std::string& name, std::uint32_t access) override {
    HKEY key = nullptr;
    const LSTATUS code = RegCreateKeyExW(ToSystem(parent), ToUtf16(name).c_str(), 0, nullptr,
                                         REG_OPTION_NON_VOLATILE, access, nullptr, &key, nullptr);
    return code == ERROR_SUCCESS ? KeyResult{code, FromSystem(key)} : KeyResult{code, {}};
  }

  ValueResult Query(RegistryKey key, const std::string& name, std::uint32_t capacity) override {
    const RawValue value = ReadWhole(ToSystem(key), ToUtf16(name));
    if (value.code != ERROR_SUCCESS) {
      return {value.code, "", 0};
    }
    if (value.type != REG_SZ && value.type != REG_EXPAND_SZ) {
      return {kRegistryFileNotFound, "", 0};
    }
    std::string bytes = ToUtf8(value.text);
    const auto size = static_cast<std::uint32_t>(bytes.size());
    if (capacity == 0) {
      return {kRegistrySuccess, "", size};
    }
    if (size > capacity) {
      return {kRegistryMoreData, "", size};
    }
    return {kRegistrySuccess, std::move(bytes), size};
  }

  std::int32_t SetText(RegistryKey key, const std::string& name, std::string_view data) override {
    std::wstring text = ToUtf16(data);
    const auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    // The system adds its own terminator if it finds a NUL right after the text.
    text.push_back(L'.');
    return RegSetValueExW(ToSystem(key), ToUtf16(name).c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(text.data()), size);
  }

  std::int32_t Close(RegistryKey key) override { return RegCloseKey(ToSystem(key)); }
};

}  // namespace

std::unique_ptr<RegistryKeys> MakeRegistryKeys() { return std::make_unique<Win32RegistryKeys>(); }

}  // namespace kitbay::platform::win32
