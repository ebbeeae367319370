#pragma once

#include <string>
#include <string_view>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// A temporary file beside a target, which takes the target's place in one step. It is deleted
/// again unless it got there. Failures are those of `Files`.
class ReplacementFile {
 public:
  /// `target` is a path as `ToSystemPath` gives it. Fails when the target is a folder or read-only.
  explicit ReplacementFile(std::wstring target);
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// Writes the bytes and has them on the disk when it returns.
  void Write(std::string_view bytes);

  /// Writes the bytes after those that are there, without waiting for the disk.
  void Append(std::string_view bytes);

  /// Gives the file the target's name, in place of the target.
  void PutInPlace();

 private:
  std::wstring target_;
  std::wstring path_;
  UniqueFile file_;
};

}  // namespace kitbay::platform::win32
