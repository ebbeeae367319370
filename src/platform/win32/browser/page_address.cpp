#include "platform/win32/browser/page_address.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string>

#include "base/text.h"

namespace kitbay::platform::win32 {
namespace {

constexpr std::string_view kScheme = "file:";

std::optional<char> EscapedByte(std::string_view escape) {
  if (escape.size() < 3 || escape[0] != '%') {
    return std::nullopt;
  }
  unsigned value = 0;
  const char* end = escape.data() + 3;
  const auto result = std::from_chars(escape.data() + 1, end, value, 16);
  if (result.ec != std::errc() || result.ptr != end) {
    return std::nullopt;
  }
  return static_cast<char>(value);
}

std::string WithoutEscapes(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::optional<char> byte = EscapedByte(text.substr(i, 3));
    plain += byte.value_or(text[i]);
    if (byte) {
      i += 2;
    }
  }
  return plain;
}

std::string Canonical(std::string_view path) {
  std::string canonical = base::ToLower(path);
  std::replace(canonical.begin(), canonical.end(), '/', '\\');
  return canonical;
}

bool StartsWithDrive(std::string_view path) {
  return path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':';
}

/// The path after "file:": a drive's after any number of slashes, a server's after two.
std::string PathOfFileUrl(std::string_view rest) {
  std::string path = Canonical(WithoutEscapes(rest));
  const std::size_t start = std::min(path.find_first_not_of('\\'), path.size());
  const std::string_view name = std::string_view(path).substr(start);
  if (StartsWithDrive(name)) {
    return std::string(name);
  }
  constexpr std::string_view kThisMachine = "localhost\\";
  if (start == 2 && name.starts_with(kThisMachine)) {
    return std::string(name.substr(kThisMachine.size()));
  }
  return "\\\\" + std::string(name);
}

}  // namespace

bool IsAddressOfFile(std::string_view address, std::string_view path) {
  const bool is_url = base::ToLower(address.substr(0, kScheme.size())) == kScheme;
  const std::string named =
      is_url ? PathOfFileUrl(address.substr(kScheme.size())) : Canonical(address);
  return named == Canonical(path);
}

}  // namespace kitbay::platform::win32
