#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {

/// The UTF-8 text of an automation string, which stays with its owner; "" for a null string.
inline std::string TextOf(BSTR value) {
  return value == nullptr ? std::string() : ToUtf8({value, SysStringLen(value)});
}

/// Owns one automation string; a null string counts as empty.
class Bstr {
 public:
  Bstr() = default;

  /// Throws `std::bad_alloc`.
  explicit Bstr(std::string_view utf8) {
    const std::wstring wide = ToUtf16(utf8);
    value_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (value_ == nullptr) {
      throw std::bad_alloc();
    }
  }
  ~Bstr() { SysFreeString(value_); }
  Bstr(Bstr&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  BSTR get() const { return value_; }

  /// Where a call stores a string that this object then owns.
  BSTR* receive() {
    SysFreeString(std::exchange(value_, nullptr));
    return &value_;
  }

  /// Passes the string to the caller, who frees it.
  BSTR release() { return std::exchange(value_, nullptr); }

  std::string ToText() const { return TextOf(value_); }

 private:
  BSTR value_ = nullptr;
};

}  // namespace kitbay::platform::win32
