#pragma once

#include <optional>
#include <string>

namespace kitbay::prefs {

/// The part of a typed URL that is kept: what follows "http://", and from the first "www" on if
/// there is one.
std::string WithoutScheme(const std::string& url);

/// A source as it is typed: its URL, behind "#" the key that its maker signs with.
struct TypedSource {
  std::string url;
  std::string key;  ///< 64 hexadecimal digits; empty where the source does not sign
};

/// Takes the text apart; none where its last part has a "#" that no key follows.
std::optional<TypedSource> ReadTypedSource(const std::string& text);

/// Whether the text contains ".xml" and one of the known domain endings, anywhere. Case-sensitive.
bool ValidateUrl(const std::string& text);

}  // namespace kitbay::prefs
