#include "prefs/source_url.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"
#include "catalog/manifest_signature.h"

namespace kitbay::prefs {
namespace {

constexpr std::string_view kManifestEnding = ".xml";
constexpr std::array<std::string_view, 7> kDomainEndings = {".org", ".com", ".net", ".gov",
                                                            ".ac",  ".mil", ".edu"};
constexpr std::string_view kScheme = "http://";
constexpr std::string_view kSchemeEnd = "://";

}  // namespace

std::string WithoutScheme(const std::string& url) {
  std::string rest = url;
  if (rest.find(kScheme) != std::string::npos) {
    rest.erase(0, rest.find(kSchemeEnd) + kSchemeEnd.size());
  }
  const std::size_t www = rest.find("www");
  return www == std::string::npos ? rest : rest.substr(www);
}

std::optional<TypedSource> ReadTypedSource(const std::string& text) {
  const std::size_t mark = text.rfind('#');
  if (mark == std::string::npos || text.find('/', mark) != std::string::npos) {
    return TypedSource{.url = WithoutScheme(text), .key = ""};
  }
  const std::string key = base::ToLower(base::Trim(text.substr(mark + 1)));
  return catalog::ReadKey(key)
             ? std::optional(TypedSource{.url = WithoutScheme(text.substr(0, mark)), .key = key})
             : std::nullopt;
}

bool ValidateUrl(const std::string& text) {
  const auto contains = [&](std::string_view part) { return text.find(part) != std::string::npos; };
  return contains(kManifestEnding) &&
         std::any_of(kDomainEndings.begin(), kDomainEndings.end(), contains);
}

}  // namespace kitbay::prefs
