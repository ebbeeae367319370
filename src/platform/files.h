#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/clock.h"

namespace kitbay::platform {

/// The failure (70) of an operation on a file that another program has open without sharing. The
/// program may close it in a moment.
class FileInUse : public base::Failure {
 public:
  FileInUse() : base::Failure(base::RuntimeError::kPermissionDenied) {}
};

/// A file that is open for reading at any position. Until it is closed nobody can write or delete
/// it, except programs that already had it open for writing.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// The file's length in bytes.
  virtual std::uint64_t Size() const = 0;

  /// Reads up to `length` bytes from the byte offset `place` into `bytes` and returns how many were
  /// read: fewer than requested only at the end of the file. Fails as the operations of `Files` do.
  virtual std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const = 0;
};

/// The file system. Paths are UTF-8 with "\" or "/" between parts and are not case-sensitive.
///
/// Failures are `base::Failure`: 53 no such file, 76 no such folder in the path, 70 access denied
/// or in use (`FileInUse`), 61 disk full, 75 anything else.
class Files {
 public:
  virtual ~Files() = default;

  /// Whether a listing of `path` finds a file or a folder.
  virtual bool Exists(const std::string& path) const = 0;

  /// All bytes of a file.
  virtual std::string Read(const std::string& path) const = 0;

  /// Opens a file for reading.
  virtual std::unique_ptr<FileReader> Open(const std::string& path) const = 0;

  /// Creates the file, replacing an earlier one, in three calls of the system: creates it for
  /// reading and writing, shared for reading only, without attributes; writes `bytes`, at most 2^31
  /// - 1, in one piece; closes it. Fails with 70 if the file exists and is read-only, hidden or a
  /// system file.
  virtual void Create(const std::string& path, std::string_view bytes) = 0;

  /// Replaces the contents of the file `path` by `bytes` so that every reader, even after a crash
  /// or on a full disk, sees the old file or the new one, whole. Creates the file if it is missing.
  virtual void Replace(const std::string& path, std::string_view bytes) = 0;

  /// As `Replace`, but only while the file contains `before`, which is checked last of all. Returns
  /// whether it did; otherwise nothing is changed.
  virtual bool ReplaceUnchanged(const std::string& path, std::string_view before,
                                std::string_view bytes) = 0;

  /// Replaces the contents of the file `path`, which is in use. The old file gets another name,
  /// under which `SweepReplacements` finds it once nobody uses it. Fails with `FileInUse` if the
  /// file cannot be renamed; a loaded library can.
  virtual void ReplaceInUse(const std::string& path, std::string_view bytes) = 0;

  /// Deletes a file. Fails with 70 if it is read-only or a folder.
  virtual void Delete(const std::string& path) = 0;

  /// Waits a moment so that other programs may close a file.
  virtual void WaitForOthers(unsigned milliseconds) const = 0;

  /// Deletes what replacements, in this process or another, have left in `folder` and the folders
  /// below it, without following links. Touches no other file. Ignores a folder that does not exist
  /// and files that are still in use.
  virtual void SweepReplacements(const std::string& folder) = 0;

  /// Creates one folder. Fails with 75 if it exists, with 76 if its parent does not.
  virtual void CreateFolder(const std::string& path) = 0;

  /// Whether the system refuses this user a new file in `folder`; found out by trying. Any other
  /// reason that prevents the file, such as a missing folder, does not count.
  virtual bool RefusesFiles(const std::string& folder) = 0;

  /// Whether exactly this path is a link to another place in the file system: a symbolic link or a
  /// mount point.
  virtual bool IsLink(const std::string& path) const = 0;

  /// When the file was last written, in local time.
  virtual LocalTime LastModified(const std::string& path) const = 0;

  /// Makes `time` the local time at which the file was last written.
  virtual void Redate(const std::string& path, const LocalTime& time) = 0;
};

}  // namespace kitbay::platform
