#include "source_tool/library_header.h"

#include <cstdint>

namespace kitbay::source_tool {
namespace {

constexpr std::size_t kHeaderPlace = 0x3C;
constexpr std::uint32_t kMachine32 = 0x14C;
constexpr std::uint32_t kMachine64 = 0x8664;

// How the fixed part of a version resource begins: its signature and its structure version.
constexpr std::string_view kVersionMark("\xBD\x04\xEF\xFE\x00\x00\x01\x00", 8);

// The little-endian number of `length` bytes at `place`; 0 beyond the end.
std::uint32_t NumberAt(std::string_view bytes, std::size_t place, std::size_t length) {
  std::uint32_t number = 0;
  for (std::size_t i = length; i > 0 && place + length <= bytes.size(); --i) {
    number = number << 8U | static_cast<unsigned char>(bytes[place + i - 1]);
  }
  return number;
}

std::string VersionIn(std::string_view bytes) {
  const std::size_t mark = bytes.find(kVersionMark);
  if (mark == std::string_view::npos) {
    return "";
  }
  const auto part = [&](std::size_t place) {
    return std::to_string(NumberAt(bytes, mark + kVersionMark.size() + place, 2));
  };
  return part(2) + "." + part(0) + "." + part(6) + "." + part(4);
}

}  // namespace

std::optional<LibraryHeader> ReadLibraryHeader(std::string_view bytes) {
  const std::size_t header = NumberAt(bytes, kHeaderPlace, 4);
  if (!bytes.starts_with("MZ") || header + 4 > bytes.size() ||
      bytes.substr(header, 4) != std::string_view("PE\0\0", 4)) {
    return std::nullopt;
  }
  const std::uint32_t machine = NumberAt(bytes, header + 4, 2);
  const int bits = machine == kMachine32 ? 32 : machine == kMachine64 ? 64 : 0;
  return LibraryHeader{.bits = bits, .version = VersionIn(bytes)};
}

}  // namespace kitbay::source_tool
