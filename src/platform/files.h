#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"

namespace kitbay::platform {

/// The file system. Paths are UTF-8 with "\" or "/" between parts; letter case does not matter.
///
/// Failures are `base::Failure`: 53 no such file, 76 no such folder on the way, 70 access denied or
/// in use, 61 disk full, 75 anything else.
class Files {
 public:
  virtual ~Files() = default;

  /// Whether a listing of `path` finds a file or a folder.
  virtual bool Exists(const std::string& path) const = 0;

  /// All bytes of a file.
  virtual std::string Read(const std::string& path) const = 0;

  /// Creates the file anew, replacing an existing one, and writes all of `bytes`.
  virtual void Write(const std::string& path, std::string_view bytes) = 0;

  /// Puts `bytes` in the place of the file `path` so that any reader, a crash or a full disk sees
  /// the old file or the new one, whole. Creates the file when it is missing.
  virtual void Replace(const std::string& path, std::string_view bytes) = 0;

  /// Creates one folder. Fails with 75 when it exists, with 76 when its parent does not.
  virtual void CreateFolder(const std::string& path) = 0;

  /// When the file was last written, in local time.
  virtual LocalTime LastModified(const std::string& path) const = 0;
};

}  // namespace kitbay::platform
