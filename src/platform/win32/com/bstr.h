#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace kitbay::platform::win32 {

std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

/// Owns one automation string; a null one counts as empty.
class Bstr {
 public:
  Bstr() = default;

  /// Throws `std::bad_alloc`.
  explicit Bstr(std::string_view utf8) {
    const std::wstring wide = ToWide(utf8);
    value_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (value_ == nullptr) throw std::bad_alloc();
  }
  ~Bstr() { SysFreeString(value_); }
  Bstr(Bstr&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  BSTR get() const { return value_; }

  /// Where a call puts a string that this object then owns.
  BSTR* receive() {
    SysFreeString(std::exchange(value_, nullptr));
    return &value_;
  }

  /// Gives the string to the caller, who frees it.
  BSTR release() { return std::exchange(value_, nullptr); }

  std::string ToText() const {
    return value_ == nullptr ? std::string() : ToUtf8({value_, SysStringLen(value_)});
  }

 private:
  BSTR value_ = nullptr;
};

}  // namespace kitbay::platform::win32
