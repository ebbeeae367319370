#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ovalink {

/// Whether an answer with this status names another address to ask.
bool IsRedirection(std::uint32_t status);

/// An answer other than 200 in words, such as "The server answered 404 (Not Found)".
std::string StatusText(std::uint32_t status);

/// The number of bytes that an answer announces; nothing when the field is no number.
std::optional<std::uint64_t> AnnouncedLength(std::string_view content_length);

/// Whether a path names a file of this computer in full: a drive's letter, a colon, "\" or "/", and
/// at least one character more, none of them a colon.
bool IsFullLocalPath(std::string_view path);

}  // namespace ovalink
