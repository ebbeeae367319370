#include "base/text.h"

#include <algorithm>

namespace kitbay::base {
namespace {

/// The length in bytes of a character that begins with `first`; 0 if no character does.
std::size_t CharacterLength(unsigned char first) {
  if (first < 0x80) {
    return 1;
  }
  if (first < 0xC2 || first > 0xF4) {
    return 0;
  }
  return first < 0xE0 ? 2 : (first < 0xF0 ? 3 : 4);
}

/// Whether `character`, a first byte and its continuation, is the one valid spelling.
bool IsCharacter(std::string_view character) {
  const auto is_trail = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
  };
  if (character.size() == 1) {
    return true;
  }
  const auto first = static_cast<unsigned char>(character[0]);
  const auto second = static_cast<unsigned char>(character[1]);
  const bool is_too_long = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
  const bool is_surrogate = first == 0xED && second > 0x9F;
  const bool is_past_the_end = first == 0xF4 && second > 0x8F;
  return !is_too_long && !is_surrogate && !is_past_the_end &&
         std::all_of(character.begin() + 1, character.end(), is_trail);
}

}  // namespace

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

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(static_cast<unsigned char>(text.front()));
    if (length == 0 || length > text.size() || !IsCharacter(text.substr(0, length))) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

std::string AfterLastSlash(std::string_view text) {
  const auto slash = text.rfind('/');
  return std::string(slash == std::string_view::npos ? text : text.substr(slash + 1));
}

}  // namespace kitbay::base
