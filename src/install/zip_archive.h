#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/files.h"

namespace kitbay::install {

/// What an archive's directory says about an entry.
struct ZipEntry {
  std::string name;  ///< with "\" between its parts
  std::uint64_t size = 0;
  std::uint32_t method = 0;  ///< of compression, by the format's own number

  /// Whether its sizes are in a zip64 field that the library has not read; `size` is then a mark.
  bool has_unread_sizes = false;
};

/// The methods of entries that can be read.
inline constexpr std::uint32_t kStored = 0;
inline constexpr std::uint32_t kDeflated = 8;

/// A zip archive that is read entry by entry. Damage goes unnoticed; but when the file itself can
/// no longer be read, every operation throws the failure of reading it.
class ZipArchive {
 public:
  /// Opens the archive at `path`.
  ZipArchive(const platform::Files& files, const std::string& path);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  /// Whether there is an archive to read: a file that can be opened and has a zip directory.
  bool is_open() const { return zip_ != nullptr; }

  /// Each moves to an entry, and returns whether there is one.
  bool GoToFirst();
  bool GoToNext();

  /// The current entry. Throws `base::Failure` (5) with the name if its name is so long that its
  /// end does not fit the buffer of 260 characters.
  ZipEntry Entry() const;

  /// Reads the whole current entry in one piece, as many bytes as `bytes` has. What the archive
  /// does not deliver, for whatever reason, is zero.
  void Read(std::span<char> bytes);

  /// Ends the reading of the entry.
  void CloseEntry();

 private:
  class Source;

  std::unique_ptr<Source> source_;
  void* zip_ = nullptr;
};

}  // namespace kitbay::install
