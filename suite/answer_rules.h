#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "transfer_failure.h"

namespace ovalink {

/// Whether an answer with this status redirects to another address.
bool IsRedirection(std::uint32_t status);

/// An answer other than 200 in words, such as "The server answered 404 (Not Found)".
std::string StatusText(std::uint32_t status);

/// A number of bytes as an answer announces it; nothing if the text is not a whole number.
std::optional<std::uint64_t> WholeNumber(std::string_view text);

/// Whether the file at `destination` is a list of components: its name ends in ".xml".
bool IsListAt(std::string_view destination);

/// The largest size of a file, and the text of the failure if it is larger.
struct SizeLimit {
  std::uint64_t bytes = 0;
  std::string excess;
};

/// The limit for a file stored at `destination`: 64 MB for a list of components; `most_bytes`, or
/// none, for others.
SizeLimit LimitAt(std::string_view destination, std::optional<std::uint64_t> most_bytes);

/// Checks the amount of data that arrives: throws `TransferFailure` as soon as there is too much,
/// or if it ends too early.
class ByteCount {
 public:
  /// `before` of the file's bytes are already there.
  ByteCount(SizeLimit limit, std::uint64_t before) : limit_(std::move(limit)), received_(before) {}

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
  SizeLimit limit_;
  std::optional<std::uint64_t> announced_;
  std::uint64_t received_;
};

/// Throws `TransferFailure` unless this many bytes fit into what is `free` on the disk.
void DemandRoom(std::uint64_t bytes, std::uint64_t free);

/// Whether a path is the full path of a file on this computer: a drive letter, a colon, "\" or "/",
/// and at least one more character, none of them a colon.
bool IsFullLocalPath(std::string_view path);

}  // namespace ovalink
