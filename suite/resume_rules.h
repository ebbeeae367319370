#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ovalink {

/// What is remembered of an answer, so that its file need not be fetched twice.
struct TransferRecord {
  std::string source = {};         ///< server and path of the request
  std::string destination = {};    ///< where the file is stored
  std::string etag = {};           ///< "" when the answer had none that may be sent back
  std::string last_modified = {};  ///< as the server wrote it; "" likewise
  std::uint64_t length = 0;        ///< of the whole file
  std::uint64_t sum = 0;           ///< `SumOf` the stored file; 0 while it is not stored

  bool operator==(const TransferRecord&) const = default;
};

/// By what two files are told apart (FNV-1a). Never 0.
std::uint64_t SumOf(std::string_view bytes);

/// The record as the lines of a text, and back; nothing where the text has another form.
std::string RecordText(const TransferRecord& record);
std::optional<TransferRecord> ReadRecord(std::string_view text);

/// The part of a file that an answer brings, from its field "Content-Range".
struct ContentRange {
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  std::uint64_t length = 0;  ///< of the whole file

  bool operator==(const ContentRange&) const = default;
};

/// Reads "bytes FIRST-LAST/LENGTH"; nothing for any other form, and for a part that is none.
std::optional<ContentRange> ReadContentRange(std::string_view field);

/// A validator as it may be sent back; "" for one that may not.
std::string UsableField(std::string_view field);

/// Whether a file may be put together from answers that have this entity tag.
bool IsStrong(std::string_view etag);

/// The fields that ask for the rest of a file from byte `first` on, as long as it is the one of
/// `record`; and those that ask for the file unless it is that one.
std::string RestFields(const TransferRecord& record, std::uint64_t first);
std::string UnlessChangedFields(const TransferRecord& record);

/// Whether `range` is all that is missing of the file of `record` from byte `first` on.
bool IsRest(const ContentRange& range, const TransferRecord& record, std::uint64_t first);

}  // namespace ovalink
