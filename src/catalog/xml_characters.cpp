#include "catalog/xml_characters.h"

#include <algorithm>

#include "base/text.h"

namespace kitbay::catalog {
namespace {

bool IsControlCharacter(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\r' && byte != '\n';
}

}  // namespace

bool IsXmlText(std::string_view text) {
  constexpr std::string_view kFffe = "\xEF\xBF\xBE";
  constexpr std::string_view kFfff = "\xEF\xBF\xBF";
  return base::IsUtf8(text) && std::none_of(text.begin(), text.end(), IsControlCharacter) &&
         text.find(kFffe) == std::string_view::npos && text.find(kFfff) == std::string_view::npos;
}

}  // namespace kitbay::catalog
