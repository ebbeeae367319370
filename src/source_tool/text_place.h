#pragma once

#include <cstddef>
#include <string_view>

namespace kitbay::source_tool {

/// A place in a text. Line and column count from 1, the column in characters.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Where the byte at `offset` of a UTF-8 text is; the end of the text for an offset beyond it.
TextPlace PlaceOf(std::string_view text, std::size_t offset);

}  // namespace kitbay::source_tool
