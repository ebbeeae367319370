#pragma once

#include <string>
#include <string_view>

namespace kitbay::platform::win32 {

/// UTF-8 to UTF-16. Bytes that are not valid UTF-8 become U+FFFD.
std::wstring ToUtf16(std::string_view text);

/// UTF-16 to UTF-8. Half surrogate pairs become U+FFFD.
std::string ToUtf8(std::wstring_view text);

}  // namespace kitbay::platform::win32
