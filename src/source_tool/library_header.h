#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kitbay::source_tool {

/// What a library's bytes say about it.
struct LibraryHeader {
  int bits = 0;         ///< 32 or 64; 0 for another processor
  std::string version;  ///< four numbers joined by "."; empty if it has none
};

/// Returns nothing if the bytes are not a Windows library.
std::optional<LibraryHeader> ReadLibraryHeader(std::string_view bytes);

}  // namespace kitbay::source_tool
