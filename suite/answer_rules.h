#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "transfer_failure.h"

namespace ovalink {

/// Whether an answer with this status names another address to ask.
bool IsRedirection(std::uint32_t status);

/// An answer other than 200 in words, such as "The server answered 404 (Not Found)".
std::string StatusText(std::uint32_t status);

/// The number of bytes that an answer announces; nothing when the field is no number.
std::optional<std::uint64_t> AnnouncedLength(std::string_view content_length);

/// Whether what is stored at `destination` is a list of components: its name ends in ".xml".
bool IsListAt(std::string_view destination);

/// The most bytes that a file may have which is stored there: 64 MB for a list of components.
std::uint64_t MostBytesAt(std::string_view destination);

/// Compares what arrives with what may: throws `TransferFailure` as soon as it is too much, and
/// when it has ended too early.
class ByteCount {
 public:
  /// `most` is what the file may have; `before` of its bytes are there already.
  ByteCount(std::uint64_t most, std::uint64_t before) : most_(most), received_(before) {}

  /// The answer announces so many bytes for the whole file.
  void Announce(std::uint64_t length);

  void Add(std::uint64_t bytes);

  /// The answer has ended.
  void End() const;

  std::optional<std::uint64_t> announced() const { return announced_; }
  std::uint64_t received() const { return received_; }

  /// The failure of an answer that ended here.
  TransferFailure CutShort() const;

 private:
  std::uint64_t most_;
  std::optional<std::uint64_t> announced_;
  std::uint64_t received_;
};

/// Throws `TransferFailure` unless so many bytes fit into what is `free` on the disk.
void DemandRoom(std::uint64_t bytes, std::uint64_t free);

/// Whether a path names a file of this computer in full: a drive's letter, a colon, "\" or "/", and
/// at least one character more, none of them a colon.
bool IsFullLocalPath(std::string_view path);

}  // namespace ovalink
