#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ovalink {

/// What is remembered about an answer, so that its file need not be fetched twice.
struct TransferRecord {
  std::string source = {};         ///< server and path of the request
  std::string destination = {};    ///< where the file is stored
  std::string etag = {};           ///< "" if the answer had none that may be sent back
  std::string last_modified = {};  ///< as the server wrote it; "" as above
  std::uint64_t length = 0;        ///< of the whole file
  std::uint64_t sum = 0;           ///< `SumOf` the stored file; 0 until it is stored

  bool operator==(const TransferRecord&) const = default;
};

/// A checksum that tells two files apart (FNV-1a). Never 0.
std::uint64_t SumOf(std::string_view bytes);

/// The record as lines of text, and back; nothing if the text has another form.
std::string RecordText(const TransferRecord& record);
std::optional<TransferRecord> ReadRecord(std::string_view text);

/// The part of a file that an answer contains, from its field "Content-Range".
struct ContentRange {
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  std::uint64_t length = 0;  ///< of the whole file

  bool operator==(const ContentRange&) const = default;
};

/// Reads "bytes FIRST-LAST/LENGTH"; nothing for any other form or an impossible range.
std::optional<ContentRange> ReadContentRange(std::string_view field);

/// A validator that may be sent back; "" if it may not.
std::string UsableField(std::string_view field);

/// Whether a file may be assembled from answers that have this entity tag.
bool IsStrong(std::string_view etag);

/// The fields that request the rest of a file from byte `first` on, provided that it still is the
/// file of `record`; and those that request the file unless it still is that one.
std::string RestFields(const TransferRecord& record, std::uint64_t first);
std::string UnlessChangedFields(const TransferRecord& record);

/// Whether `range` is everything that the file of `record` lacks from byte `first` on.
bool IsRest(const ContentRange& range, const TransferRecord& record, std::uint64_t first);

}  // namespace ovalink
