#pragma once

#include <string>

namespace kitbay::prefs {

/// What is kept of a URL that the user typed: without "http://" and all before it, and from the
/// first "www" on where there is one.
std::string WithoutScheme(const std::string& url);

/// Whether the text names an XML file and has one of the known domain endings, wherever it stands.
/// Letter case counts.
bool ValidateUrl(const std::string& text);

}  // namespace kitbay::prefs
