#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kitbay::fakes {

/// An entry of an archive that a test makes. What is not said is as an honest program writes it.
struct ZipFile {
  std::string name;
  std::string bytes = {};
  bool deflated = false;

  // Lies, told in the directory and before the entry alike.
  std::optional<std::uint32_t> declared_size = {};
  std::optional<std::uint32_t> declared_compressed_size = {};
  std::optional<std::uint32_t> declared_crc = {};

  /// How the entry says that it is compressed; by `deflated` when not said.
  std::optional<std::uint16_t> declared_method = {};

  /// The name that stands before the entry; that of the directory when not said.
  std::optional<std::string> local_name = {};

  /// Extra fields of the entry in the directory.
  std::string extra = {};
};

/// The bytes of a zip archive with these entries.
std::string ZipOf(const std::vector<ZipFile>& files);

}  // namespace kitbay::fakes
