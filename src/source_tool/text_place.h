#pragma once

#include <cstddef>
#include <string_view>

namespace kitbay::source_tool {

/// A place in a text; both count from 1, columns in characters.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Where the byte at `offset` of UTF-8 text stands; its end for an offset beyond.
TextPlace PlaceOf(std::string_view text, std::size_t offset);

}  // namespace kitbay::source_tool
