#include "answer_rules.h"

#include <charconv>
#include <limits>

#include "base/text.h"

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

constexpr std::uint64_t kMegabyte = 1024 * 1024;
constexpr std::uint64_t kMostBytesOfList = 64 * kMegabyte;

/// Whole megabytes, at least one unless `bytes` is 0.
std::string Megabytes(std::uint64_t bytes) {
  return std::to_string(bytes / kMegabyte + (bytes % kMegabyte != 0 ? 1 : 0)) + " MB";
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

std::optional<std::uint64_t> WholeNumber(std::string_view text) {
  std::uint64_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  if (error != std::errc() || end != last) {
    return std::nullopt;
  }
  return number;
}

bool IsListAt(std::string_view destination) {
  return kitbay::base::ToLower(destination).ends_with(".xml");
}

SizeLimit LimitAt(std::string_view destination, std::optional<std::uint64_t> most_bytes) {
  if (IsListAt(destination)) {
    return {kMostBytesOfList, "The server's list of components is larger than 64 MB"};
  }
  if (most_bytes) {
    return {*most_bytes, "The server's file is larger than the " + std::to_string(*most_bytes) +
                             " bytes announced for it"};
  }
  return {std::numeric_limits<std::uint64_t>::max(), ""};
}

void ByteCount::Announce(std::uint64_t length) {
  announced_ = length;
  if (length > limit_.bytes) {
    throw TransferFailure(limit_.excess);
  }
}

void ByteCount::Add(std::uint64_t bytes) {
  received_ += bytes;
  if (announced_ && received_ > *announced_) {
    throw TransferFailure("The server sent more than the " + std::to_string(*announced_) +
                          " bytes it announced");
  }
  if (received_ > limit_.bytes) {
    throw TransferFailure(limit_.excess);
  }
}

void ByteCount::End() const {
  if (announced_ && received_ < *announced_) {
    throw CutShort();
  }
}

TransferFailure ByteCount::CutShort() const {
  return TransferFailure("The answer was cut short: " + std::to_string(received_) +
                         (announced_ ? " of " + std::to_string(*announced_) : "") + " bytes");
}

void DemandRoom(std::uint64_t bytes, std::uint64_t free) {
  if (bytes > free) {
    throw TransferFailure("There is no room for the file: it takes " + Megabytes(bytes) +
                          ", and the disk has " + Megabytes(free) + " left");
  }
}

bool IsFullLocalPath(std::string_view path) {
  if (path.size() < 4 || path[1] != ':') {
    return false;
  }
  const char letter = static_cast<char>(path[0] | 0x20);
  return letter >= 'a' && letter <= 'z' && (path[2] == '\\' || path[2] == '/') &&
         path.find(':', 2) == std::string_view::npos;
}

}  // namespace ovalink
