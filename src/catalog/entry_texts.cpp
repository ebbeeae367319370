#include "catalog/entry_texts.h"

#include "catalog/xml_file.h"

namespace kitbay::catalog {

std::optional<std::string_view> KeepText(const pugi::xml_node& element, KeptTexts& texts) {
  if (!element) {
    return std::nullopt;
  }
  // An element that contains nothing but a text has it as its own value.
  return element.first_child() ? texts.Keep(ElementText(element))
                               : texts.Keep(Trimmed(element.value()));
}

std::optional<std::string_view> KeepText(const pugi::xml_attribute& attribute, KeptTexts& texts) {
  return attribute ? std::optional(texts.Keep(attribute.value())) : std::nullopt;
}

}  // namespace kitbay::catalog
