#include "fakes/memory_files.h"

#include <regex>
#include <stdexcept>
#include <utility>

namespace kitbay::fakes {

using base::Failure;
using base::RuntimeError;
using platform::LocalTime;

/// A file of the tree that is held open.
class MemoryFileReader : public platform::FileReader {
 public:
  MemoryFileReader(const MemoryFiles& files, std::string path, const MemoryFiles::Entry& entry)
      : files_(files), path_(std::move(path)), entry_(entry) {
    ++entry_.readers;
  }
  ~MemoryFileReader() override { --entry_.readers; }
  MemoryFileReader(const MemoryFileReader&) = delete;
  MemoryFileReader& operator=(const MemoryFileReader&) = delete;

  std::uint64_t Size() const override { return entry_.bytes.size(); }
  std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const override {
    files_.Record("ReadAt " + path_);
    return place >= Size() ? 0 : entry_.bytes.copy(bytes, length, static_cast<std::size_t>(place));
  }

 private:
  const MemoryFiles& files_;
  std::string path_;
  const MemoryFiles::Entry& entry_;
};

MemoryFiles::MemoryFiles() { AddFolder("C:"); }

bool MemoryFiles::Exists(const std::string& path) const {
  Record("Exists " + path);
  if (path.empty()) {
    return false;
  }
  const WindowsPath parsed = ParsePath(path);
  if (parsed.parts.empty() || Find(parsed) != nullptr) {
    return Find(parsed) != nullptr;
  }
  const std::string folder = parsed.Parent().Key() + "\\";
  for (auto at = entries_.lower_bound(folder);
       at != entries_.end() && at->first.starts_with(folder); ++at) {
    if (at->first.find('\\', folder.size()) == std::string::npos &&
        MatchesPattern(at->second.name, parsed.parts.back())) {
      return true;
    }
  }
  return false;
}

std::string MemoryFiles::Read(const std::string& path) const {
  Record("Read " + path);
  return OpenForReading(path).bytes;
}

std::unique_ptr<platform::FileReader> MemoryFiles::Open(const std::string& path) const {
  Record("Open " + path);
  return std::make_unique<MemoryFileReader>(*this, path, OpenForReading(path));
}

void MemoryFiles::Create(const std::string& path, std::string_view bytes) {
  Record("Create " + path);
  CheckWritable(path);
  Put(path, bytes);
}

void MemoryFiles::Replace(const std::string& path, std::string_view bytes) {
  Record("Replace " + path);
  CheckWritable(path);
  Put(path, bytes);
}

bool MemoryFiles::ReplaceUnchanged(const std::string& path, std::string_view before,
                                   std::string_view bytes) {
  Record("Replace " + path);
  if (before_replacing) {
    before_replacing();
  }
  CheckWritable(path);
  if (OpenForReading(path).bytes != before) {
    return false;
  }
  Put(path, bytes);
  return true;
}

void MemoryFiles::ReplaceInUse(const std::string& path, std::string_view bytes) {
  Record("ReplaceInUse " + path);
  const WindowsPath parsed = CheckPlace(path);
  const Entry* entry = Find(parsed);
  if (entry == nullptr || entry->hold != Hold::kLoaded || entry->in_use || entry->readers > 0) {
    CheckWritable(path);
  }
  if (entry != nullptr) {
    WindowsPath aside = parsed;
    for (int number = 1; number == 1 || Find(aside) != nullptr; ++number) {
      aside.parts.back() = "~kb1-" + std::to_string(number) + ".tmp";
    }
    Entry moved = *entry;
    moved.name = aside.parts.back();
    entries_.erase(parsed.Key());
    entries_.insert_or_assign(aside.Key(), moved);
  }
  Put(path, bytes);
}

void MemoryFiles::Delete(const std::string& path) {
  Record("Delete " + path);
  const WindowsPath parsed = CheckPlace(path);
  if (Find(parsed) == nullptr) {
    throw Failure(RuntimeError::kFileNotFound);
  }
  CheckWritable(path);
  entries_.erase(parsed.Key());
}

void MemoryFiles::WaitForOthers(unsigned milliseconds) const {
  waited_ += milliseconds;
  if (while_waiting) {
    while_waiting();
  }
}

void MemoryFiles::SweepReplacements(const std::string& folder) {
  Record("SweepReplacements " + folder);
  const WindowsPath parsed = ParsePath(folder);
  if (!folder.empty() && Find(parsed) != nullptr && Find(parsed)->is_folder) {
    SweepBelow(parsed);
  }
}

void MemoryFiles::SweepBelow(const WindowsPath& folder) {
  static const std::regex kLeftOver("~kb[0-9]+-[0-9]+\\.tmp");
  for (const std::string& name : Names(folder.Key())) {
    WindowsPath path = folder;
    path.parts.push_back(name);
    const Entry& entry = *Find(path);
    if (entry.is_folder) {
      if (!entry.is_link) {
        SweepBelow(path);
      }
    } else if (std::regex_match(name, kLeftOver) && !IsHeld(entry) && !entry.read_only &&
               MayChangeIn(folder)) {
      entries_.erase(path.Key());
    }
  }
}

void MemoryFiles::CreateFolder(const std::string& path) {
  Record("CreateFolder " + path);
  const WindowsPath parsed = CheckPlace(path);
  if (Find(parsed) != nullptr) {
    throw Failure(RuntimeError::kPathFileAccessError);
  }
  DemandChangeIn(parsed.Parent());
  MakeFolder(parsed);
}

bool MemoryFiles::RefusesFiles(const std::string& folder) {
  Record("RefusesFiles " + folder);
  const Entry* entry = Find(ParsePath(folder));
  return entry != nullptr && entry->is_folder && !MayChangeIn(ParsePath(folder));
}

bool MemoryFiles::IsLink(const std::string& path) const {
  Record("IsLink " + path);
  const Entry* entry = Find(ParsePath(path));
  return entry != nullptr && entry->is_link;
}

LocalTime MemoryFiles::LastModified(const std::string& path) const {
  Record("LastModified " + path);
  const WindowsPath parsed = CheckPlace(path);
  if (const Entry* entry = Find(parsed)) {
    return entry->last_modified;
  }
  throw Failure(RuntimeError::kFileNotFound);
}

void MemoryFiles::Redate(const std::string& path, const LocalTime& time) {
  Record("Redate " + path);
  const WindowsPath parsed = CheckPlace(path);
  DemandChangeIn(parsed.Parent());
  Entry* const entry = Find(parsed);
  if (entry == nullptr) {
    throw Failure(RuntimeError::kFileNotFound);
  }
  entry->last_modified = time;
}

void MemoryFiles::AddFile(const std::string& path, std::string_view bytes) {
  const WindowsPath parsed = ParsePath(path);
  WindowsPath folder{parsed.drive, {}};
  AddFolder(folder.Key());
  for (std::size_t i = 0; i + 1 < parsed.parts.size(); ++i) {
    folder.parts.push_back(parsed.parts[i]);
    if (Find(folder) == nullptr) {
      MakeFolder(folder);
    }
  }
  Put(path, bytes);
}

void MemoryFiles::AddFolder(const std::string& path) {
  const WindowsPath parsed = ParsePath(path);
  WindowsPath folder{parsed.drive, {}};
  entries_.try_emplace(folder.Key(), Entry{.is_folder = true, .name = folder.drive});
  for (const std::string& part : parsed.parts) {
    folder.parts.push_back(part);
    if (Find(folder) == nullptr) {
      MakeFolder(folder);
    }
  }
}

void MemoryFiles::SetReadOnly(const std::string& path, bool read_only) {
  Demand(path).read_only = read_only;
}

void MemoryFiles::SetLink(const std::string& path, bool is_link) { Demand(path).is_link = is_link; }

void MemoryFiles::SetUnwritable(const std::string& folder, bool unwritable) {
  Demand(folder).unwritable = unwritable;
}

void MemoryFiles::SetInUse(const std::string& path, bool in_use) { Demand(path).in_use = in_use; }

void MemoryFiles::SetHeld(const std::string& path, Hold hold) { Demand(path).hold = hold; }

void MemoryFiles::SetLastModified(const std::string& path, const LocalTime& time) {
  Demand(path).last_modified = time;
}

void MemoryFiles::FailAt(std::size_t nth, RuntimeError error) {
  faults_.insert_or_assign(operations_.size() + nth, error);
}

void MemoryFiles::FailWritesTo(const std::string& path, RuntimeError error) {
  failing_writes_.insert_or_assign(ParsePath(path).Key(), error);
}

std::optional<std::string> MemoryFiles::Bytes(const std::string& path) const {
  const Entry* entry = Find(ParsePath(path));
  if (entry == nullptr || entry->is_folder) {
    return std::nullopt;
  }
  return entry->bytes;
}

bool MemoryFiles::IsFile(const std::string& path) const { return Bytes(path).has_value(); }

bool MemoryFiles::IsFolder(const std::string& path) const {
  const Entry* entry = Find(ParsePath(path));
  return entry != nullptr && entry->is_folder;
}

std::vector<std::string> MemoryFiles::Names(const std::string& folder) const {
  std::vector<std::string> names;
  const std::string start = ParsePath(folder).Key() + "\\";
  for (auto at = entries_.lower_bound(start); at != entries_.end() && at->first.starts_with(start);
       ++at) {
    if (at->first.find('\\', start.size()) == std::string::npos) {
      names.push_back(at->second.name);
    }
  }
  return names;
}

void MemoryFiles::Record(const std::string& operation) const {
  operations_.push_back(operation);
  const auto fault = faults_.find(operations_.size());
  if (fault != faults_.end()) {
    throw Failure(fault->second);
  }
}

bool MemoryFiles::MayChangeIn(const WindowsPath& folder) const {
  const Entry* entry = Find(folder);
  bool is_administrators = false;
  for (const auto& [owned, value] : owned_) {
    // The map is ordered from outer folders to inner ones.
    if ((folder.Key() + "\\").starts_with(owned + "\\")) {
      is_administrators = value;
    }
  }
  return (entry == nullptr || !entry->unwritable) &&
         (user_ == User::kAdministrator || !is_administrators);
}

void MemoryFiles::DemandChangeIn(const WindowsPath& folder) const {
  if (!MayChangeIn(folder)) {
    throw Failure(RuntimeError::kPermissionDenied);
  }
}

MemoryFiles::Entry* MemoryFiles::Find(const WindowsPath& path) {
  const auto at = entries_.find(path.Key());
  return at == entries_.end() ? nullptr : &at->second;
}

const MemoryFiles::Entry* MemoryFiles::Find(const WindowsPath& path) const {
  const auto at = entries_.find(path.Key());
  return at == entries_.end() ? nullptr : &at->second;
}

MemoryFiles::Entry& MemoryFiles::Demand(const std::string& path) {
  Entry* entry = Find(ParsePath(path));
  if (entry == nullptr) {
    throw std::logic_error("the test arranges nothing at " + path);
  }
  return *entry;
}

const MemoryFiles::Entry& MemoryFiles::OpenForReading(const std::string& path) const {
  const WindowsPath parsed = CheckPlace(path);
  const Entry* entry = Find(parsed);
  if (entry == nullptr) {
    throw Failure(RuntimeError::kFileNotFound);
  }
  if (entry->is_folder) {
    throw Failure(RuntimeError::kPermissionDenied);
  }
  if (entry->in_use) {
    throw platform::FileInUse();
  }
  return *entry;
}

bool MemoryFiles::IsHeld(const Entry& entry) {
  return entry.in_use || entry.readers > 0 || entry.hold != Hold::kNone;
}

void MemoryFiles::CheckWritable(const std::string& path) const {
  const WindowsPath parsed = CheckPlace(path);
  const Entry* entry = Find(parsed);
  if (!MayChangeIn(parsed.Parent()) ||
      (entry != nullptr && (entry->is_folder || entry->read_only))) {
    throw Failure(RuntimeError::kPermissionDenied);
  }
  if (entry != nullptr && IsHeld(*entry)) {
    throw platform::FileInUse();
  }
  const auto failing = failing_writes_.find(parsed.Key());
  if (failing != failing_writes_.end()) {
    throw Failure(failing->second);
  }
}

WindowsPath MemoryFiles::CheckPlace(const std::string& path) const {
  WindowsPath parsed = ParsePath(path);
  const Entry* folder = Find(parsed.Parent());
  if (path.empty() || folder == nullptr || !folder->is_folder) {
    throw Failure(RuntimeError::kPathNotFound);
  }
  if (!parsed.parts.empty() && !IsValidName(parsed.parts.back())) {
    throw Failure(RuntimeError::kPathFileAccessError);
  }
  return parsed;
}

void MemoryFiles::Put(const std::string& path, std::string_view bytes) {
  const WindowsPath parsed = ParsePath(path);
  // An overwritten file keeps the case of its name.
  Entry& entry =
      entries_.try_emplace(parsed.Key(), Entry{.name = parsed.parts.back()}).first->second;
  entry.bytes = bytes;
  entry.last_modified = now_;
}

void MemoryFiles::MakeFolder(const WindowsPath& path) {
  entries_.insert_or_assign(
      path.Key(), Entry{.is_folder = true, .name = path.parts.back(), .last_modified = now_});
}

void MemoryFiles::Delete(const WindowsPath& path, bool force) {
  if (Find(path)->is_folder) {
    for (const std::string& name : Names(path.Key())) {
      WindowsPath child = path;
      child.parts.push_back(name);
      Delete(child, force);
    }
  }
  const Entry& entry = *Find(path);
  const bool kept = IsHeld(entry) || (entry.read_only && !force);
  if (kept || path.parts.empty() || !MayChangeIn(path.Parent())) {
    throw Failure(RuntimeError::kPermissionDenied);
  }
  entries_.erase(path.Key());
}

}  // namespace kitbay::fakes
