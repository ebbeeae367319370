#include "source_tool/text_place.h"

#include <algorithm>

namespace kitbay::source_tool {

TextPlace PlaceOf(std::string_view text, std::size_t offset) {
  TextPlace place;
  for (const char byte : text.substr(0, std::min(offset, text.size()))) {
    if (byte == '\n') {
      ++place.line;
      place.column = 1;
    } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
      ++place.column;
    }
  }
  return place;
}

}  // namespace kitbay::source_tool
