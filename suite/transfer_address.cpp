#include "transfer_address.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "base/text.h"
#include "transfer_failure.h"

namespace ovalink {

using kitbay::base::ToLower;

namespace {

constexpr std::uint16_t kPlainPort = 80;
constexpr std::uint16_t kSecurePort = 443;

std::optional<std::uint16_t> NumberIn(std::string_view digits, std::uint16_t least) {
  std::uint16_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool is_whole = error == std::errc() && end == digits.data() + digits.size();
  if (!is_whole || number < least) {
    return std::nullopt;
  }
  return number;
}

struct Authority {
  std::string host;
  std::optional<std::uint16_t> port;
};

bool MayStandInHost(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte > ' ' && byte != 0x7F &&
         std::string_view("\"#%/:<>?@[\\]^`{|}").find(character) == std::string_view::npos;
}

bool IsHost(std::string_view host) {
  if (host.starts_with('[') && host.ends_with(']')) {
    const std::string_view address = host.substr(1, host.size() - 2);
    return address.find(':') != std::string_view::npos &&
           address.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
  }
  return !host.empty() && std::all_of(host.begin(), host.end(), MayStandInHost);
}

/// Host and port of "host", "host:port", "[address]" or "[address]:port".
Authority AuthorityOf(std::string_view text) {
  Authority authority{std::string(text), std::nullopt};
  const std::size_t colon = text.rfind(':');
  if (colon != std::string_view::npos && text.find(']', colon) == std::string_view::npos) {
    authority.host = std::string(text.substr(0, colon));
    authority.port = NumberIn(text.substr(colon + 1), 1);
    if (!authority.port) {
      authority.host.clear();
    }
  }
  if (!IsHost(authority.host)) {
    throw TransferFailure("\"" + std::string(text) + "\" is not the name of a server");
  }
  return authority;
}

/// A path for the request line: what may not appear there is written as "%XX". What is already
/// written that way stays; a fragment is dropped.
std::string EncodedPath(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char character : path.substr(0, path.find('#'))) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte <= ' ' || byte >= 0x7F ||
        std::string_view("\"<>\\^`{|}").find(character) != std::string_view::npos) {
      encoded += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    } else {
      encoded += character;
    }
  }
  return encoded.starts_with('/') ? encoded : "/" + encoded;
}

TransferAddress AddressOf(bool is_secure, const Authority& authority, std::string_view path) {
  return {is_secure, authority.host, authority.port.value_or(is_secure ? kSecurePort : kPlainPort),
          EncodedPath(path)};
}

bool IsListed(const Authority& server, std::string_view list) {
  const std::string host = ToLower(server.host);
  const std::string with_port = host + ":" + std::to_string(server.port.value_or(kPlainPort));
  for (;;) {
    const std::size_t end = list.find(';');
    const std::string entry = ToLower(kitbay::base::Trim(list.substr(0, end)));
    if (entry == host || entry == with_port) {
      return true;
    }
    if (end == std::string_view::npos) {
      return false;
    }
    list.remove_prefix(end + 1);
  }
}

/// The part of a URL after "//": host and port, and the path from the next "/" or "?" on.
TransferAddress AddressAfterSlashes(bool is_secure, std::string_view text) {
  const std::size_t end = std::min(text.find_first_of("/?#"), text.size());
  return AddressOf(is_secure, AuthorityOf(text.substr(0, end)), text.substr(end));
}

/// Whether `url` begins with the scheme `name` and "//"; removes both if so.
bool TakeScheme(std::string_view& url, std::string_view name) {
  const std::string start = std::string(name) + "://";
  if (ToLower(url.substr(0, start.size())) != start) {
    return false;
  }
  url.remove_prefix(start.size());
  return true;
}

/// `path`, which begins with "/", without its segments "." and "..". A query is unchanged.
std::string WithoutDotSegments(std::string_view path) {
  const std::string_view query = path.substr(std::min(path.find('?'), path.size()));
  path.remove_suffix(query.size());
  std::string resolved;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/', 1), path.size());
    const std::string_view segment = path.substr(0, end);
    path.remove_prefix(end);
    const bool climbs = segment == "/..";
    if (climbs) {
      resolved.erase(std::min(resolved.rfind('/'), resolved.size()));
    }
    if (!climbs && segment != "/.") {
      resolved += segment;
    } else if (path.empty()) {
      resolved += '/';
    }
  }
  return resolved + std::string(query);
}

/// The address of a `location` that is not a complete URL: on the same server as `from`.
TransferAddress RelativeTo(const TransferAddress& from, std::string_view location) {
  if (location.starts_with("//")) {
    return AddressAfterSlashes(from.is_secure, location.substr(2));
  }
  const std::string base = from.path.substr(0, from.path.find('?'));
  TransferAddress to = from;
  if (location.starts_with('/')) {
    to.path = EncodedPath(location);
  } else if (location.starts_with('?')) {
    to.path = EncodedPath(base + std::string(location));
  } else {
    to.path = EncodedPath(base.substr(0, base.rfind('/') + 1) + std::string(location));
  }
  return to;
}

/// Whether `text` begins with a URL scheme.
bool HasScheme(std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && text.find_first_of("/?#") > colon;
}

}  // namespace

bool IsLoopback(std::string_view host) {
  const std::string name = ToLower(host);
  if (name == "localhost" || name == "[::1]") {
    return true;
  }
  std::string_view rest = name;
  std::array<std::optional<std::uint16_t>, 4> numbers;
  for (auto& number : numbers) {
    const std::size_t end = std::min(rest.find('.'), rest.size());
    number = NumberIn(rest.substr(0, end), 0);
    // With a leading zero, the system would read the digits as octal.
    const bool is_octal = end > 1 && rest.front() == '0';
    if (!number || *number > 255 || is_octal) {
      return false;
    }
    if (&number == &numbers.back()) {
      return end == rest.size() && numbers.front() == 127;
    }
    if (end == rest.size()) {
      return false;
    }
    rest.remove_prefix(end + 1);
  }
  return false;
}

TransferAddress AddressOf(const DownloadRequest& request, std::string_view plain_http_servers) {
  const std::string scheme = ToLower(request.server);
  if (scheme != "http:" && scheme != "https:") {
    const Authority server = AuthorityOf(request.server);
    const bool is_plain = IsLoopback(server.host) || IsListed(server, plain_http_servers);
    return AddressOf(!is_plain, server, request.file_path);
  }
  // Clients that split a URL at its slashes keep one or both of the slashes after the scheme.
  std::string_view rest = request.file_path;
  for (int slashes = 0; slashes < 2 && rest.starts_with('/'); ++slashes) {
    rest.remove_prefix(1);
  }
  const TransferAddress address = AddressAfterSlashes(scheme == "https:", rest);
  const bool may_be_plain =
      IsLoopback(address.host) || IsListed({address.host, address.port}, plain_http_servers);
  if (!address.is_secure && !may_be_plain) {
    throw TransferFailure("Plain HTTP is not allowed for the server " + address.host);
  }
  return address;
}

TransferAddress RedirectedAddress(const TransferAddress& from, std::string_view location) {
  TransferAddress to;
  if (TakeScheme(location, "https")) {
    to = AddressAfterSlashes(true, location);
  } else if (TakeScheme(location, "http")) {
    to = AddressAfterSlashes(false, location);
  } else if (!HasScheme(location)) {
    to = RelativeTo(from, location);
  } else {
    throw TransferFailure("The server sent the request on to something other than HTTP");
  }
  to.path = WithoutDotSegments(to.path);
  const bool stays = ToLower(from.host) == ToLower(to.host) && (to.is_secure || !from.is_secure);
  if (!stays && !(from.is_secure && to.is_secure)) {
    throw TransferFailure("The server sent the request on to " +
                          std::string(to.is_secure ? "https" : "http") + "://" + to.host +
                          ", which is not allowed");
  }
  return to;
}

}  // namespace ovalink
