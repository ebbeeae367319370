#pragma once

#include <algorithm>
#include <memory_resource>
#include <string_view>

namespace kitbay::catalog {

/// Copies of texts, which live as long as this does. Packed closely: most of what a list keeps of a
/// file is text, and fresh memory is what keeping it costs.
class KeptTexts {
 public:
  std::string_view Keep(std::string_view text) {
    if (text.empty()) {
      return "";
    }
    char* const copy = static_cast<char*>(memory_.allocate(text.size(), 1));
    std::copy(text.begin(), text.end(), copy);
    return {copy, text.size()};
  }

 private:
  std::pmr::monotonic_buffer_resource memory_;
};

}  // namespace kitbay::catalog
