#pragma once

#include <string>
#include <string_view>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// A temporary file beside a target, which replaces the target in one step. Deleted again unless it
/// did. Failures are those of `Files`.
class ReplacementFile {
 public:
  /// `target` is a path from `ToSystemPath`. Fails if the target is a folder or read-only.
  explicit ReplacementFile(std::wstring target);
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// Writes the bytes after those already written.
  void Append(std::string_view bytes);

  /// Waits until the bytes are on the disk. Otherwise a power cut soon after `PutInPlace` may leave
  /// a target that lacks them.
  void Flush();

  /// Renames the file to the target's name, replacing the target. Fails with `FileInUse` while
  /// another program has either file open; it can then be tried again.
  void PutInPlace();

  /// As `PutInPlace`, for a target that is in use: first renames that one to a left-over's name.
  void PutInPlaceOfUsed();

 private:
  std::wstring target_;
  std::wstring path_;
  UniqueFile file_;
};

/// Deletes temporary files that replacements have left in `folder`, a path from `ToSystemPath`, and
/// in the folders below it, because their process ended or the file was in use. Ignores what cannot
/// be deleted.
void DeleteLeftOvers(const std::wstring& folder);

}  // namespace kitbay::platform::win32
