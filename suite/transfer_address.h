#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "request_document.h"

namespace ovalink {

/// Where one HTTP request goes.
struct TransferAddress {
  bool is_secure = true;
  std::string host;  ///< UTF-8; an IPv6 address in its brackets
  std::uint16_t port = 443;
  std::string path;  ///< begins with "/"; all characters are valid in a request line
};

/// Whether the name is this computer: "localhost", 127.x.y.z, or "[::1]".
bool IsLoopback(std::string_view host);

/// The address of a request. Without a scheme it is HTTPS, but plain HTTP for loopback and for the
/// servers in `plain_http_servers`: host or host:port, separated by ";", ignoring case. If the
/// server is a scheme, "http:" or "https:", the file path contains the rest of the URL. Throws
/// `TransferFailure` for plain HTTP to any other server, and for an invalid address.
TransferAddress AddressOf(const DownloadRequest& request, std::string_view plain_http_servers);

/// The address that the answer of `from` redirects to with `location`, absolute or relative; its
/// path has no parts "." and "..". Throws `TransferFailure` unless both are HTTPS, or host and
/// scheme stay the same or the scheme becomes HTTPS.
TransferAddress RedirectedAddress(const TransferAddress& from, std::string_view location);

}  // namespace ovalink
