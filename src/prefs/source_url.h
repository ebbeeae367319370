#pragma once

#include <string>

namespace kitbay::prefs {

/// The part of a typed URL that is kept: what follows "http://", and from the first "www" on if
/// there is one.
std::string WithoutScheme(const std::string& url);

/// Whether the text contains ".xml" and one of the known domain endings, anywhere. Case-sensitive.
bool ValidateUrl(const std::string& text);

}  // namespace kitbay::prefs
