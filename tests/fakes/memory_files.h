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

/// A file system in memory that follows the rules of Windows: names keep their letter case and are
/// compared without it, both separators, drives (C: is there from the start and is the current
/// one), read-only files. `MemoryFileSystemObject` works on the same tree.
///
/// What lies below C:\Program Files, C:\Windows and the suite's folder of the tests, C:\Ovalink,
/// belongs to an administrator: a standard user reads it and changes nothing there.
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

  // What tests arrange. None of it counts as an operation.

  /// Puts a file there, in the place of an existing one, and creates its drive and folders.
  void AddFile(const std::string& path, std::string_view bytes);

  /// Puts a folder there and creates its drive and the folders above it.
  void AddFolder(const std::string& path);

  /// Makes what is there a link. Where it leads is not followed: what a test has written through it
  /// turns up below it.
  void SetLink(const std::string& path, bool is_link = true);

  void SetReadOnly(const std::string& path, bool read_only = true);

  void SetUser(User user) { user_ = user; }

  /// From here on everybody may change what lies below the folder, or nobody but an administrator.
  void SetEverybodys(const std::string& folder) { owned_[ParsePath(folder).Key()] = false; }
  void SetAdministrators(const std::string& folder) { owned_[ParsePath(folder).Key()] = true; }

  /// Nothing can be created, written or deleted directly in the folder, whoever the user is.
  void SetUnwritable(const std::string& folder, bool unwritable = true);

  /// The file is open elsewhere for that program alone.
  void SetInUse(const std::string& path, bool in_use = true);

  /// Another program holds the file so: it reads it, and lets others do so; it writes it, and lets
  /// others read and write; it has it loaded as a library.
  enum class Hold { kNone, kReading, kWriting, kLoaded };
  void SetHeld(const std::string& path, Hold hold);

  /// What other programs do while somebody waits for them; none at first.
  std::function<void()> while_waiting;

  /// What other programs do just before a file is looked at for the last time and replaced.
  std::function<void()> before_replacing;

  /// How long was waited for other programs in all, in milliseconds.
  unsigned waited() const { return waited_; }

  void SetLastModified(const std::string& path, const platform::LocalTime& time);

  /// What files get as their last-modified time when they are written from now on.
  void SetNow(const platform::LocalTime& now) { now_ = now; }

  /// Lets the `nth` operation from now, counted from 1, fail with `error` and do nothing.
  void FailAt(std::size_t nth, base::RuntimeError error);

  /// Lets every writing of bytes to the file fail with `error` from now on.
  void FailWritesTo(const std::string& path, base::RuntimeError error);

  // What tests look at.

  /// The bytes of a file; none when there is no such file.
  std::optional<std::string> Bytes(const std::string& path) const;
  bool IsFile(const std::string& path) const;
  bool IsFolder(const std::string& path) const;

  /// The names directly in a folder, as they were written when created, in the order of a listing.
  std::vector<std::string> Names(const std::string& folder) const;

  std::size_t operation_count() const { return operations_.size(); }

  /// Every operation in order, failed ones included: its name, a blank and the path as it was
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

  /// Whether what lies directly in the folder may be created, written and deleted.
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

  /// Takes `path` apart; fails unless the folder that it lies in exists and its own name is one.
  WindowsPath CheckPlace(const std::string& path) const;
  void Put(const std::string& path, std::string_view bytes);
  void SweepBelow(const WindowsPath& folder);
  void MakeFolder(const WindowsPath& path);
  void Delete(const WindowsPath& path, bool force);

  std::map<std::string, Entry> entries_;  ///< by `WindowsPath::Key`
  User user_ = User::kStandard;
  /// Whether what lies below a folder, by its `WindowsPath::Key`, is an administrator's; of several
  /// the innermost counts.
  std::map<std::string, bool> owned_{
      {"c:\\ovalink", true}, {"c:\\program files", true}, {"c:\\windows", true}};
  std::map<std::string, base::RuntimeError> failing_writes_;
  platform::LocalTime now_{2026, 11, 21, 10, 15, 30};
  mutable std::vector<std::string> operations_;
  mutable unsigned waited_ = 0;
  std::map<std::size_t, base::RuntimeError> faults_;  ///< by the number of the operation
};

/// The suite's file-system object over the tree of a `MemoryFiles`, which must outlive it and its
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
