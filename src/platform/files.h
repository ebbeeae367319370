#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/clock.h"

namespace kitbay::platform {

/// The failure (70) of an operation on a file that another program holds in a way that forbids it.
/// The program may let go of it in a moment.
class FileInUse : public base::Failure {
 public:
  FileInUse() : base::Failure(base::RuntimeError::kPermissionDenied) {}
};

/// A file that is open for reading at any place. Until it is closed nobody can write or delete it,
/// except who had it open for writing before.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// The file's length in bytes.
  virtual std::uint64_t Size() const = 0;

  /// Reads up to `length` bytes from the byte offset `place` on into `bytes` and returns how many
  /// came: fewer than asked for only where the file ends. Fails as the operations of `Files` do.
  virtual std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const = 0;
};

/// The file system. Paths are UTF-8 with "\" or "/" between parts; letter case does not matter.
///
/// Failures are `base::Failure`: 53 no such file, 76 no such folder on the way, 70 access denied,
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

  /// Creates the file anew in three calls of the system: created for reading and writing, others
  /// let read only, without any attribute; `bytes`, at most 2^31 - 1, written in one piece; closed.
  /// Fails with 70 when there is a file that is read-only, or marked as hidden or as the system's.
  virtual void Create(const std::string& path, std::string_view bytes) = 0;

  /// Puts `bytes` in the place of the file `path` so that any reader, a crash or a full disk sees
  /// the old file or the new one, whole. Creates the file when it is missing.
  virtual void Replace(const std::string& path, std::string_view bytes) = 0;

  /// As `Replace`, but only while the file holds `before`, which is looked at last of all. Returns
  /// whether it did; otherwise nothing is changed.
  virtual bool ReplaceUnchanged(const std::string& path, std::string_view before,
                                std::string_view bytes) = 0;

  /// Puts `bytes` in the place of the file `path`, which is in use. The old file gets another name,
  /// where `SweepReplacements` finds it once nobody uses it. Fails with `FileInUse` when it cannot
  /// be renamed; a loaded library can.
  virtual void ReplaceInUse(const std::string& path, std::string_view bytes) = 0;

  /// Deletes a file. Fails with 70 when it is read-only or a folder.
  virtual void Delete(const std::string& path) = 0;

  /// Waits a moment, in which other programs may let go of a file.
  virtual void WaitForOthers(unsigned milliseconds) const = 0;

  /// Deletes what replacements, in this process or another, have left in `folder` and in the
  /// folders below it; links are not followed. No other file is touched. A folder that is not there
  /// and what is still in use are passed over.
  virtual void SweepReplacements(const std::string& folder) = 0;

  /// Creates one folder. Fails with 75 when it exists, with 76 when its parent does not.
  virtual void CreateFolder(const std::string& path) = 0;

  /// Whether the system refuses this user a new file in `folder`, which is found out by trying.
  /// What keeps a file from being made for another reason, such as a missing folder, is no refusal.
  virtual bool RefusesFiles(const std::string& folder) = 0;

  /// Whether there is, under this very path, a link to another place of the file system: a symbolic
  /// link or a mount point.
  virtual bool IsLink(const std::string& path) const = 0;

  /// When the file was last written, in local time.
  virtual LocalTime LastModified(const std::string& path) const = 0;

  /// Makes `time` the local time at which the file was last written.
  virtual void Redate(const std::string& path, const LocalTime& time) = 0;
};

}  // namespace kitbay::platform
