#pragma once

#include <string>
#include <string_view>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// A temporary file beside a target, which takes the target's place in one step. It is deleted
/// again unless it got there. Failures are those of `Files`.
class ReplacementFile {
 public:
  /// `target` is a path as `ToSystemPath` returns it. Fails when the target is a folder or
  /// read-only.
  explicit ReplacementFile(std::wstring target);
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// Writes the bytes after those that are there.
  void Append(std::string_view bytes);

  /// Waits until the bytes are on the disk: without it, a loss of power soon after `PutInPlace` may
  /// leave a target that lacks them.
  void Flush();

  /// Gives the file the target's name, in place of the target. Fails with `FileInUse` while another
  /// program has either file open; it can then be tried again.
  void PutInPlace();

  /// As `PutInPlace`, for a target that is in use: that one gets the name of a left-over first.
  void PutInPlaceOfUsed();

 private:
  std::wstring target_;
  std::wstring path_;
  UniqueFile file_;
};

/// Deletes the temporary files in `folder`, a path as `ToSystemPath` returns it, and in the folders
/// below it, that replacements have left there because their process ended or the file was in use.
/// What cannot be deleted is passed over.
void DeleteLeftOvers(const std::wstring& folder);

}  // namespace kitbay::platform::win32
