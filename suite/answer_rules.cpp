#include "answer_rules.h"

#include <charconv>

namespace ovalink {
namespace {

std::string_view ReasonOf(std::uint32_t status) {
  switch (status) {
    case 204:
      return "No Content";
    case 206:
      return "Partial Content";
    case 400:
      return "Bad Request";
    case 401:
      return "Unauthorized";
    case 403:
      return "Forbidden";
    case 404:
      return "Not Found";
    case 407:
      return "Proxy Authentication Required";
    case 408:
      return "Request Timeout";
    case 410:
      return "Gone";
    case 429:
      return "Too Many Requests";
    case 500:
      return "Internal Server Error";
    case 502:
      return "Bad Gateway";
    case 503:
      return "Service Unavailable";
    case 504:
      return "Gateway Timeout";
    default:
      return {};
  }
}

}  // namespace

bool IsRedirection(std::uint32_t status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::string StatusText(std::uint32_t status) {
  const std::string text = "The server answered " + std::to_string(status);
  const std::string_view reason = ReasonOf(status);
  return reason.empty() ? text : text + " (" + std::string(reason) + ")";
}

std::optional<std::uint64_t> AnnouncedLength(std::string_view content_length) {
  std::uint64_t length = 0;
  const char* const last = content_length.data() + content_length.size();
  const auto [end, error] = std::from_chars(content_length.data(), last, length);
  if (error != std::errc() || end != last) return std::nullopt;
  return length;
}

bool IsFullLocalPath(std::string_view path) {
  if (path.size() < 4 || path[1] != ':') return false;
  const char letter = static_cast<char>(path[0] | 0x20);
  return letter >= 'a' && letter <= 'z' && (path[2] == '\\' || path[2] == '/') &&
         path.find(':', 2) == std::string_view::npos;
}

}  // namespace ovalink
