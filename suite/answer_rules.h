#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "transfer_failure.h"

namespace ovalink {

/// Whether an answer with this status redirects to another address.
bool IsRedirection(std::uint32_t status);

/// An answer other than 200 in words, such as "The server answered 404 (Not Found)".
std::string StatusText(std::uint32_t status);

/// The number of bytes that an answer announces; nothing if the field is not a number.
std::optional<std::uint64_t> AnnouncedLength(std::string_view content_length);

/// Whether the file at `destination` is a list of components: its name ends in ".xml".
bool IsListAt(std::string_view destination);

/// The largest size of a file stored there: 64 MB for a list of components.
std::uint64_t MostBytesAt(std::string_view destination);

/// Checks the amount of data that arrives: throws `TransferFailure` as soon as there is too much,
/// or if it ends too early.
class ByteCount {
 public:
  /// The file may have `most` bytes; `before` of them are already there.
  ByteCount(std::uint64_t most, std::uint64_t before) : most_(most), received_(before) {}

  /// The answer announces this many bytes for the whole file.
  void Announce(std::uint64_t length);

  void Add(std::uint64_t bytes);

  /// The answer has ended.
  void End() const;

  std::optional<std::uint64_t> announced() const { return announced_; }
  std::uint64_t received() const { return received_; }

  /// The failure of an answer that ends here.
  TransferFailure CutShort() const;

 private:
  std::uint64_t most_;
  std::optional<std::uint64_t> announced_;
  std::uint64_t received_;
};

/// Throws `TransferFailure` unless this many bytes fit into what is `free` on the disk.
void DemandRoom(std::uint64_t bytes, std::uint64_t free);

/// Whether a path is the full path of a file on this computer: a drive letter, a colon, "\" or "/",
/// and at least one more character, none of them a colon.
bool IsFullLocalPath(std::string_view path);

}  // namespace ovalink
