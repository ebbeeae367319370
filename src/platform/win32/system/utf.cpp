#include "platform/win32/system/utf.h"

#include <windows.h>

#include <limits>
#include <stdexcept>

namespace kitbay::platform::win32 {
namespace {

int Length(std::size_t length) {
  if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw std::length_error("text too long to convert");
  }
  return static_cast<int>(length);
}

}  // namespace

std::wstring ToUtf16(std::string_view text) {
  const int length = Length(text.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
  return wide;
}

std::string ToUtf8(std::wstring_view text) {
  const int length = Length(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

}  // namespace kitbay::platform::win32
