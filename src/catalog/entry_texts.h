#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string_view>

#include "catalog/kept_texts.h"

namespace kitbay::catalog {

/// A copy of `ElementText(element)`; none if there is no element.
std::optional<std::string_view> KeepText(const pugi::xml_node& element, KeptTexts& texts);

/// A copy of the attribute's value; none if there is no attribute.
std::optional<std::string_view> KeepText(const pugi::xml_attribute& attribute, KeptTexts& texts);

/// Whether both texts are the same. Faster than `strcmp` for the names of elements, which mostly
/// differ in their first letter.
inline bool IsSameName(const char* one, const char* other) {
  while (*one == *other && *one != '\0') {
    ++one;
    ++other;
  }
  return *one == *other;
}

/// The first child element with each of these names, in the same order; empty where there is none.
/// Ends once all are found, and so is faster than a search for each.
template <std::size_t N>
std::array<pugi::xml_node, N> FindChildren(const pugi::xml_node& entry,
                                           const std::array<const char*, N>& names) {
  std::array<pugi::xml_node, N> found;
  std::size_t missing = N;
  for (pugi::xml_node child = entry.first_child(); child && missing > 0;
       child = child.next_sibling()) {
    const char* const name = child.name();
    for (std::size_t i = 0; i < N; ++i) {
      if (IsSameName(name, names[i]) && !found[i]) {
        found[i] = child;
        --missing;
      }
    }
  }
  return found;
}

}  // namespace kitbay::catalog
