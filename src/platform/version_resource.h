#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kitbay::platform {

/// The file version from a library's fixed file information.
struct FileVersion {
  std::uint32_t most_significant = 0;
  std::uint32_t least_significant = 0;
};

/// Reads the version resource of libraries.
class VersionResource {
 public:
  virtual ~VersionResource() = default;

  /// The file version of the library at `path`; empty if the file is missing, is not a library, or
  /// has no version resource with fixed file information.
  virtual std::optional<FileVersion> Read(const std::string& path) const = 0;
};

}  // namespace kitbay::platform
