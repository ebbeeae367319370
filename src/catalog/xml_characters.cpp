#include "catalog/xml_characters.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kitbay::catalog {
namespace {

// How many bytes the UTF-8 sequence that begins with `lead` has; 0 when none begins so.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead < 0xE0) {
    return 2;
  }
  if (lead >= 0xE0 && lead < 0xF0) {
    return 3;
  }
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Overlong sequences, surrogates and what is no character are told by their code.
bool IsXmlCharacter(std::uint32_t code, std::size_t length) {
  switch (length) {
    case 1:
      return code >= 0x20 || code == '\t' || code == '\r' || code == '\n';
    case 2:
      return true;
    case 3:
      return code >= 0x800 && (code < 0xD800 || code > 0xDFFF) && code < 0xFFFE;
    default:
      return code >= 0x10000 && code <= 0x10FFFF;
  }
}

// The length of the character that `text` begins with; 0 when XML cannot hold it.
std::size_t CharacterLength(std::string_view text) {
  constexpr std::array<std::uint32_t, 5> kLeadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = SequenceLength(lead);
  if (length == 0 || length > text.size()) {
    return 0;
  }
  std::uint32_t code = lead & kLeadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0U) != 0x80) {
      return 0;
    }
    code = code << 6U | (next & 0x3FU);
  }
  return IsXmlCharacter(code, length) ? length : 0;
}

}  // namespace

bool IsXmlText(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace kitbay::catalog
