#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kitbay::source_tool {

/// What the bytes of a library say of it.
struct LibraryHeader {
  int bits = 0;         ///< 32 or 64; 0 for another machine
  std::string version;  ///< four numbers joined by "."; empty where it has none
};

/// None where the bytes are no Windows library.
std::optional<LibraryHeader> ReadLibraryHeader(std::string_view bytes);

}  // namespace kitbay::source_tool
