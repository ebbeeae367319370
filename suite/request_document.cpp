#include "request_document.h"

namespace ovalink {
namespace {

constexpr std::string_view kStart = "<server>";
constexpr std::string_view kServerEnd = "</server><filetodownload>";
constexpr std::string_view kFileEnd = "</filetodownload><destpath>";
constexpr std::string_view kDestinationEnd = "</destpath><progressevents>";
constexpr std::string_view kEnd = "</progressevents>";

}  // namespace

// Values are not escaped, and the file's path comes from outside. Whatever it contains, the
// destination is what the caller wrote last.
std::optional<DownloadRequest> ReadRequestDocument(std::string_view document) {
  const std::size_t server_end = document.find(kServerEnd);
  const std::size_t file_end = document.rfind(kFileEnd);
  const std::size_t destination_end = document.rfind(kDestinationEnd);
  if (!document.starts_with(kStart) || !document.ends_with(kEnd) ||
      server_end == std::string_view::npos || file_end == std::string_view::npos ||
      destination_end == std::string_view::npos || file_end < server_end + kServerEnd.size() ||
      destination_end < file_end + kFileEnd.size()) {
    return std::nullopt;
  }
  const auto between = [&](std::size_t start, std::size_t end) {
    return std::string(document.substr(start, end - start));
  };
  return DownloadRequest{between(kStart.size(), server_end),
                         between(server_end + kServerEnd.size(), file_end),
                         between(file_end + kFileEnd.size(), destination_end)};
}

}  // namespace ovalink
