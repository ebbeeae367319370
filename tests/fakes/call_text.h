#pragma once

#include <string>

namespace kitbay::fakes {

/// A text argument in the record of a call.
inline std::string Bracketed(const std::string& text) { return " [" + text + "]"; }

}  // namespace kitbay::fakes
