#pragma once

#include <string>
#include <string_view>

namespace kitbay::base {

/// `text` with A to Z in lower case; all other bytes of the UTF-8 text are unchanged.
std::string ToLower(std::string_view text);

/// `text` without blanks at either end. Only the blank itself counts, not tabs or line ends.
std::string Trim(std::string_view text);

/// Whether `text` is valid UTF-8: no stray byte, overlong form or surrogate, nothing past U+10FFFF.
bool IsUtf8(std::string_view text);

/// What follows the last "/" of `text`, or all of `text` if it has none.
std::string AfterLastSlash(std::string_view text);

}  // namespace kitbay::base
