#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kitbay::fakes {

/// An entry of an archive that a test creates. Anything not specified is as an honest program
/// writes it.
struct ZipFile {
  std::string name;
  std::string bytes = {};
  bool deflated = false;

  // False claims, the same in the directory and before the entry.
  std::optional<std::uint32_t> declared_size = {};
  std::optional<std::uint32_t> declared_compressed_size = {};
  std::optional<std::uint32_t> declared_crc = {};

  /// The declared method of compression; by default it follows `deflated`.
  std::optional<std::uint16_t> declared_method = {};

  /// The name before the entry; by default that of the directory.
  std::optional<std::string> local_name = {};

  /// Extra fields of the entry in the directory.
  std::string extra = {};
};

/// The bytes of a zip archive with these entries.
std::string ZipOf(const std::vector<ZipFile>& files);

}  // namespace kitbay::fakes
