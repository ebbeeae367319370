#include "base/text.h"

#include <algorithm>

namespace kitbay::base {

std::string ToLower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return lower;
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string AfterLastSlash(std::string_view text) {
  const auto slash = text.rfind('/');
  return std::string(slash == std::string_view::npos ? text : text.substr(slash + 1));
}

}  // namespace kitbay::base
