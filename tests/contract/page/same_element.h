#pragma once

#include <string>

#include "platform/html_document.h"

namespace kitbay::contract {

/// Whether two handles refer to the same element: a change through one is visible through the
/// other.
inline bool AreSame(platform::HtmlNode& one, const platform::HtmlNode& other) {
  const std::string before = one.Style("color");
  one.SetStyle("color", "olive");
  const bool is_seen = other.Style("color") == "olive";
  one.SetStyle("color", before);
  return is_seen && other.Style("color") == before;
}

}  // namespace kitbay::contract
