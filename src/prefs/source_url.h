#pragma once

#include <optional>
#include <string>

namespace kitbay::prefs {

/// The part of a typed URL that is kept: what follows "http://", starting at the first "www" if
/// there is one.
std::string WithoutScheme(const std::string& url);

/// A source as it is typed: its URL and, after "#", the key with which its maker signs.
struct TypedSource {
  std::string url;
  std::string key;  ///< 64 hexadecimal digits; empty if the source does not sign
};

/// Parses the text; empty if its last part has a "#" that is not followed by a key.
std::optional<TypedSource> ReadTypedSource(const std::string& text);

/// Whether the text contains ".xml" and one of the known domain endings, anywhere. Case-sensitive.
bool ValidateUrl(const std::string& text);

}  // namespace kitbay::prefs
