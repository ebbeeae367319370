#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/files.h"

namespace kitbay::install {

/// What the directory of an archive says of an entry.
struct ZipEntry {
  std::string name;  ///< with "\" between its parts
  std::uint64_t size = 0;
  std::uint32_t method = 0;  ///< of its compression, by the format's own number

  /// Whether its sizes stand in a zip64 field that the library has not read; `size` is then a mark.
  bool has_unread_sizes = false;
};

/// The methods that an entry can be read by.
inline constexpr std::uint32_t kStored = 0;
inline constexpr std::uint32_t kDeflated = 8;

/// A zip archive that is read entry by entry. Damage goes unnoticed; but when the file itself can
/// no longer be read, every operation throws what reading it failed with.
class ZipArchive {
 public:
  /// Opens the archive at `path`.
  ZipArchive(const platform::Files& files, const std::string& path);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  /// Whether there is an archive to read: a file that can be opened and has a zip directory.
  bool is_open() const { return zip_ != nullptr; }

  /// Each takes a position, and returns whether there is an entry.
  bool GoToFirst();
  bool GoToNext();

  /// The entry at the position. Throws `base::Failure` (5) with the name when its name is so long
  /// that the buffer of 260 characters holds no end of it.
  ZipEntry Entry() const;

  /// Reads the whole entry at the position in one piece: as many bytes as `bytes` holds. What the
  /// archive does not yield, for whatever reason, is zero.
  void Read(std::span<char> bytes);

  /// Ends the reading of the entry.
  void CloseEntry();

 private:
  class Source;

  std::unique_ptr<Source> source_;
  void* zip_ = nullptr;
};

}  // namespace kitbay::install
