#pragma once

#include <algorithm>
#include <string_view>

namespace kitbay::fakes {

/// Whether a range of words contains this one.
template <typename Range>
bool IsOneOf(const Range& range, std::string_view text) {
  return std::find(range.begin(), range.end(), text) != range.end();
}

}  // namespace kitbay::fakes
