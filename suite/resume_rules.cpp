#include "resume_rules.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ovalink {
namespace {

constexpr std::string_view kHeading = "Ovalink transfer 1";
constexpr std::size_t kLines = 7;

std::optional<std::uint64_t> NumberIn(std::string_view digits) {
  std::uint64_t number = 0;
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, number);
  if (error != std::errc() || end != last) {
    return std::nullopt;
  }
  return number;
}

/// Removes the text up to the next `mark`, and the mark, from `text`, and returns that text; takes
/// all of it if there is no mark.
std::string_view TakeUntil(std::string_view& text, char mark) {
  const std::size_t end = std::min(text.find(mark), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

}  // namespace

std::uint64_t SumOf(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (const char byte : bytes) {
    sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  }
  return sum == 0 ? 1 : sum;
}

std::string RecordText(const TransferRecord& record) {
  std::string text(kHeading);
  for (const std::string& line :
       {record.source, record.destination, record.etag, record.last_modified,
        std::to_string(record.length), std::to_string(record.sum)}) {
    text += "\n" + line;
  }
  return text + "\n";
}

std::optional<TransferRecord> ReadRecord(std::string_view text) {
  if (!text.ends_with('\n') || std::count(text.begin(), text.end(), '\n') != kLines) {
    return std::nullopt;
  }
  std::array<std::string_view, kLines> lines;
  for (std::string_view& line : lines) {
    line = TakeUntil(text, '\n');
  }
  const auto length = NumberIn(lines[5]);
  const auto sum = NumberIn(lines[6]);
  if (lines[0] != kHeading || !length || !sum || UsableField(lines[3]) != lines[3] ||
      UsableField(lines[4]) != lines[4]) {
    return std::nullopt;
  }
  return TransferRecord{std::string(lines[1]),
                        std::string(lines[2]),
                        std::string(lines[3]),
                        std::string(lines[4]),
                        *length,
                        *sum};
}

std::optional<ContentRange> ReadContentRange(std::string_view field) {
  if (TakeUntil(field, ' ') != "bytes") {
    return std::nullopt;
  }
  const auto first = NumberIn(TakeUntil(field, '-'));
  const auto last = NumberIn(TakeUntil(field, '/'));
  const auto length = NumberIn(field);
  if (!first || !last || !length || *first > *last || *last >= *length) {
    return std::nullopt;
  }
  return ContentRange{*first, *last, *length};
}

std::string UsableField(std::string_view field) {
  constexpr std::size_t kMost = 1024;
  const bool is_usable =
      field.size() <= kMost &&
      std::all_of(field.begin(), field.end(), [](char c) { return c >= ' ' && c <= '~'; });
  return is_usable ? std::string(field) : std::string();
}

bool IsStrong(std::string_view etag) {
  return etag.size() > 2 && etag.starts_with('"') && etag.ends_with('"');
}

std::string RestFields(const TransferRecord& record, std::uint64_t first) {
  return "Range: bytes=" + std::to_string(first) + "-\r\nIf-Range: " + record.etag + "\r\n";
}

std::string UnlessChangedFields(const TransferRecord& record) {
  std::string fields;
  if (!record.etag.empty()) {
    fields += "If-None-Match: " + record.etag + "\r\n";
  }
  if (!record.last_modified.empty()) {
    fields += "If-Modified-Since: " + record.last_modified + "\r\n";
  }
  return fields;
}

bool IsRest(const ContentRange& range, const TransferRecord& record, std::uint64_t first) {
  return range == ContentRange{first, record.length - 1, record.length};
}

}  // namespace ovalink
