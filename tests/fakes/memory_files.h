#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "fakes/user.h"
#include "fakes/windows_path.h"
#include "platform/file_system_object.h"
#include "platform/files.h"

namespace kitbay::fakes {

/// A file system in memory that follows the rules of Windows: names keep their case but are
/// compared without it, both separators, drives (C: exists from the start and is the current one),
/// read-only files. `MemoryFileSystemObject` works on the same tree.
///
/// Everything below C:\Program Files, C:\Windows and the tests' suite folder, C:\Ovalink, belongs
/// to an administrator: a standard user can read it but not change it.
class MemoryFiles : public platform::Files {
 public:
  MemoryFiles();

  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  std::unique_ptr<platform::FileReader> Open(const std::string& path) const override;
  void Create(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;
  bool ReplaceUnchanged(const std::string& path, std::string_view before,
                        std::string_view bytes) override;
  void ReplaceInUse(const std::string& path, std::string_view bytes) override;
  void Delete(const std::string& path) override;
  void WaitForOthers(unsigned milliseconds) const override;
  void SweepReplacements(const std::string& folder) override;
  void CreateFolder(const std::string& path) override;
  bool RefusesFiles(const std::string& folder) override;
  bool IsLink(const std::string& path) const override;
  platform::LocalTime LastModified(const std::string& path) const override;
  void Redate(const std::string& path, const platform::LocalTime& time) override;

  // For tests to arrange. None of it counts as an operation.

  /// Adds a file, replacing an existing one, and creates its drive and folders.
  void AddFile(const std::string& path, std::string_view bytes);

  /// Adds a folder and creates its drive and the folders above it.
  void AddFolder(const std::string& path);

  /// Makes what is there a link. The link is not followed: what is written through it appears below
  /// it.
  void SetLink(const std::string& path, bool is_link = true);

  void SetReadOnly(const std::string& path, bool read_only = true);

  void SetUser(User user) { user_ = user; }

  /// From now on everybody may change what lies below the folder, or only an administrator.
  void SetEverybodys(const std::string& folder) { owned_[ParsePath(folder).Key()] = false; }
  void SetAdministrators(const std::string& folder) { owned_[ParsePath(folder).Key()] = true; }

  /// Nothing can be created, written or deleted directly in the folder, whoever the user is.
  void SetUnwritable(const std::string& folder, bool unwritable = true);

  /// Another program has the file open without sharing.
  void SetInUse(const std::string& path, bool in_use = true);

  /// How another program holds the file: it reads it and shares reading; it writes it and shares
  /// reading and writing; or it has loaded it as a library.
  enum class Hold { kNone, kReading, kWriting, kLoaded };
  void SetHeld(const std::string& path, Hold hold);

  /// What other programs do while somebody waits for them; initially nothing.
  std::function<void()> while_waiting;

  /// What other programs do just before a file is checked for the last time and replaced.
  std::function<void()> before_replacing;

  /// How long other programs were waited for in total, in milliseconds.
  unsigned waited() const { return waited_; }

  void SetLastModified(const std::string& path, const platform::LocalTime& time);

  /// The last-modified time of files that are written from now on.
  void SetNow(const platform::LocalTime& now) { now_ = now; }

  /// Makes the `nth` operation from now on, counted from 1, fail with `error` and do nothing.
  void FailAt(std::size_t nth, base::RuntimeError error);

  /// Makes every write to the file fail with `error` from now on.
  void FailWritesTo(const std::string& path, base::RuntimeError error);

  // For tests to inspect.

  /// The bytes of a file; empty if there is no such file.
  std::optional<std::string> Bytes(const std::string& path) const;
  bool IsFile(const std::string& path) const;
  bool IsFolder(const std::string& path) const;

  /// The names directly in a folder, in the case in which they were created and in the order of a
  /// listing.
  std::vector<std::string> Names(const std::string& folder) const;

  std::size_t operation_count() const { return operations_.size(); }

  /// Every operation in order, including failed ones: its name, a blank and the path as it was
  /// given ("Read C:\a.txt"). Those of the file-system object begin with "fso.".
  const std::vector<std::string>& operations() const { return operations_; }

 private:
  friend class MemoryFileSystemObject;
  friend class MemoryFileReader;
  friend class MemoryTextStream;

  struct Entry {
    bool is_folder = false;
    std::string name = {};
    std::string bytes = {};
    bool read_only = false;
    bool unwritable = false;
    bool in_use = false;
    Hold hold = Hold::kNone;
    bool is_link = false;
    mutable int readers = 0;
    platform::LocalTime last_modified = {};
  };

  void Record(const std::string& operation) const;

  /// Whether the user may create, write and delete files directly in the folder.
  bool MayChangeIn(const WindowsPath& folder) const;
  void DemandChangeIn(const WindowsPath& folder) const;
  Entry* Find(const WindowsPath& path);
  const Entry* Find(const WindowsPath& path) const;
  Entry& Demand(const std::string& path);

  /// The file at `path` for reading; fails as opening it does.
  const Entry& OpenForReading(const std::string& path) const;

  /// Fails as creating or overwriting the file at `path` does.
  void CheckWritable(const std::string& path) const;

  /// Whether anybody has the file open.
  static bool IsHeld(const Entry& entry);

  /// Parses `path`. Fails unless its parent folder exists and its own name is valid.
  WindowsPath CheckPlace(const std::string& path) const;
  void Put(const std::string& path, std::string_view bytes);
  void SweepBelow(const WindowsPath& folder);
  void MakeFolder(const WindowsPath& path);
  void Delete(const WindowsPath& path, bool force);

  std::map<std::string, Entry> entries_;  ///< by `WindowsPath::Key`
  User user_ = User::kStandard;
  /// Whether everything below a folder, by its `WindowsPath::Key`, belongs to an administrator; the
  /// innermost folder counts.
  std::map<std::string, bool> owned_{
      {"c:\\ovalink", true}, {"c:\\program files", true}, {"c:\\windows", true}};
  std::map<std::string, base::RuntimeError> failing_writes_;
  platform::LocalTime now_{2026, 11, 21, 10, 15, 30};
  mutable std::vector<std::string> operations_;
  mutable unsigned waited_ = 0;
  std::map<std::size_t, base::RuntimeError> faults_;  ///< by the number of the operation
};

/// The suite's file-system object on the tree of a `MemoryFiles`, which must outlive it and its
/// streams.
class MemoryFileSystemObject : public platform::FileSystemObject {
 public:
  explicit MemoryFileSystemObject(MemoryFiles& files) : files_(files) {}

  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  void CreateFolder(const std::string& path) override;
  void DeleteFolder(const std::string& path, bool force) override;
  std::unique_ptr<platform::TextStream> CreateTextFile(const std::string& path,
                                                       bool overwrite) override;
  std::unique_ptr<platform::TextStream> OpenTextFile(const std::string& path) override;

 private:
  MemoryFiles& files_;
};

}  // namespace kitbay::fakes
