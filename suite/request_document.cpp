#include "request_document.h"

namespace ovalink {
namespace {

/// Takes the element off the front of `document`, with what stands before it.
std::optional<std::string> TakeElement(std::string_view& document, const std::string& name) {
  const std::string start_tag = "<" + name + ">";
  const std::string end_tag = "</" + name + ">";
  const std::size_t start = document.find(start_tag);
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view rest = document.substr(start + start_tag.size());
  const std::size_t end = rest.find(end_tag);
  if (end == std::string_view::npos) return std::nullopt;
  document = rest.substr(end + end_tag.size());
  return std::string(rest.substr(0, end));
}

}  // namespace

std::optional<DownloadRequest> ReadRequestDocument(std::string_view document) {
  const auto server = TakeElement(document, "server");
  const auto file_path = TakeElement(document, "filetodownload");
  const auto destination = TakeElement(document, "destpath");
  const auto progress_events = TakeElement(document, "progressevents");
  if (!server || !file_path || !destination || !progress_events) return std::nullopt;
  return DownloadRequest{*server, *file_path, *destination};
}

}  // namespace ovalink
