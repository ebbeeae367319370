#include "install/package_expansion.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "base/failure.h"
#include "base/guarded.h"
#include "install/entry_names.h"
#include "install/zip_archive.h"
#include "platform/patience.h"

namespace kitbay::install {
namespace {

using base::Failure;
using base::guarded;
using base::RuntimeError;

constexpr const char* kProcedure = "Kitbay...ExpandZipFile";

// The most that one call can read or write.
constexpr std::uint64_t kLargestEntry = std::numeric_limits<std::int32_t>::max();

/// Uninitialised memory that is reused for one entry after another.
class Buffer {
 public:
  explicit Buffer(const ZipEntry& largest) {
    if (largest.size <= kLargestEntry) {
      size_ = static_cast<std::size_t>(largest.size) + 1;
      bytes_.reset(new (std::nothrow) char[size_]);
    }
    if (bytes_ == nullptr) {
      throw Failure(RuntimeError::kOutOfMemory, Printable(largest.name));
    }
  }
  std::span<char> bytes() { return {bytes_.get(), size_}; }

 private:
  std::size_t size_ = 0;
  std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays): uninitialised memory
};

/// Throws with the entry's name if its bytes cannot be read: the library would deliver none, or
/// wrong ones, and report success.
void DemandReadable(const ZipEntry& entry) {
  const auto refuse = [&](const std::string& why) {
    throw Failure(RuntimeError::kInvalidProcedureCall, Printable(entry.name) + why);
  };
  if (entry.has_unread_sizes) {
    refuse(" has its sizes in a zip64 field that cannot be read");
  }
  if (entry.method != kStored && entry.method != kDeflated) {
    refuse(" is compressed by method " + std::to_string(entry.method) +
           ", and only stored (0) and deflated (8) entries can be expanded");
  }
}

/// Checks all entries of the archive, and returns the largest of them.
ZipEntry Judge(ZipArchive& archive, EntryNames names) {
  ZipEntry largest;
  for (bool there = archive.GoToFirst(); there; there = archive.GoToNext()) {
    ZipEntry entry = archive.Entry();
    EntryNames::DemandPlain(entry.name, entry.size == 0);
    if (entry.size > 0) {
      DemandReadable(entry);
      names.DemandNoLink(entry.name);
    }
    if (entry.size > largest.size) {
      largest = std::move(entry);
    }
  }
  return largest;
}

}  // namespace

bool PackageExpansion::ExpandZipFile(std::string& destination, const std::string& archive_path) {
  bool expanded = false;
  unwritten_.clear();
  last_folder_.clear();
  guarded(log_, kProcedure, [&] {
    if (!destination.ends_with('\\')) {
      destination += '\\';
    }
    expanded = files_.Exists(archive_path) && ExpandInto(destination, archive_path);
  });
  return expanded;
}

bool PackageExpansion::ExpandInto(const std::string& destination, const std::string& archive_path) {
  ZipArchive archive(files_, archive_path);
  if (!archive.is_open()) {
    log_.LogError(log_.TimeText(), kProcedure, 0, "Source file is currept");
    return false;
  }
  Buffer buffer(Judge(archive, EntryNames(files_, destination)));
  for (bool there = archive.GoToFirst(); there; there = archive.GoToNext()) {
    ExpandEntry(archive, destination, buffer.bytes());
  }
  return true;
}

void PackageExpansion::ExpandEntry(ZipArchive& archive, const std::string& destination,
                                   std::span<char> buffer) {
  const ZipEntry entry = archive.Entry();
  if (entry.size == 0) {
    return;
  }
  if (entry.size > buffer.size()) {
    throw Failure(RuntimeError::kOutOfMemory, Printable(entry.name));
  }
  MakeFolders(destination, entry.name);
  const std::span<char> bytes = buffer.first(static_cast<std::size_t>(entry.size));
  archive.Read(bytes);
  guarded(log_, kProcedure, [&] {
    try {
      Write(destination + entry.name, {bytes.data(), bytes.size()});
    } catch (const Failure& failure) {
      unwritten_.push_back(entry.name);
      throw Failure(failure.number(), failure.description() + ": " + entry.name);
    }
  });
  archive.CloseEntry();
}

void PackageExpansion::Write(const std::string& path, std::string_view bytes) {
  platform::WithPatience(files_, [&] {
    try {
      files_.Create(path, bytes);
    } catch (const platform::FileInUse&) {
      files_.ReplaceInUse(path, bytes);
    }
  });
}

void PackageExpansion::MakeFolders(const std::string& destination, const std::string& name) {
  // Entries of one folder usually follow one another.
  const std::string own = name.substr(0, name.rfind('\\') + 1);
  if (own == last_folder_) {
    return;
  }
  for (std::size_t end = own.find('\\'); end != std::string::npos; end = own.find('\\', end + 1)) {
    const std::string folder = destination + own.substr(0, end);
    if (!files_.Exists(folder)) {
      files_.CreateFolder(folder);
    }
  }
  last_folder_ = own;
}

}  // namespace kitbay::install
