#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kitbay::fakes {

/// An element's own style as a quirks-mode page has it: lengths without a unit are pixels, and a
/// declaration that makes no sense is left out. Shorthands stay one property.
class FakeStyle {
 public:
  /// From the text of a style attribute.
  explicit FakeStyle(std::string_view attribute);

  /// The style's name of a property that scripts call "fontWeight", in any case; nothing when there
  /// is no such property.
  static std::optional<std::string> PropertyName(std::string_view script_name);

  std::string Get(std::string_view property) const;

  /// An empty value removes the property. Returns whether the value made sense.
  bool Set(const std::string& property, std::string_view value);

  /// The whole pixels of a length; 0 when it is unset or no fixed length.
  int Pixels(std::string_view property) const;

  /// "width: 70px; height: 22px;"
  std::string Text() const;

 private:
  std::vector<std::pair<std::string, std::string>> declarations_;
};

}  // namespace kitbay::fakes
