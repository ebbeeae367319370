#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>

#include "platform/files.h"

namespace kitbay::catalog {

/// What a signed manifest says about a component's package.
struct PackageDigest {
  std::string manifest;  ///< its file name
  std::string size;      ///< in bytes; empty where it says nothing
  std::string sha256;    ///< in hexadecimal digits; empty where it says nothing

  bool operator==(const PackageDigest&) const = default;
};

/// What the entry of the manifest of that file name says.
PackageDigest ReadDigest(const std::string& manifest, const pugi::xml_node& entry);

/// The size that a digest announces; empty if it announces none that can be read.
std::optional<std::uint64_t> SizeIn(const PackageDigest& digest);

/// Throws `base::Failure`, whose description says what is wrong, unless the file has that size and
/// digest. A digest without either matches no file. No more than the size is read.
void CheckDigest(const platform::FileReader& package, const PackageDigest& digest);

/// The SHA-256 of a whole file, in lower-case hexadecimal digits.
std::string Sha256Of(const platform::FileReader& file);

}  // namespace kitbay::catalog
