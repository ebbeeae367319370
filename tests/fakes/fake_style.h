#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kitbay::fakes {

/// An element's own style as a quirks-mode page reads it: lengths without a unit are pixels, and
/// invalid declarations are left out. Shorthands stay one property.
class FakeStyle {
 public:
  /// Parses the text of a style attribute.
  explicit FakeStyle(std::string_view attribute);

  /// The style name of a property that scripts call "fontWeight", in any case; nothing if there is
  /// no such property.
  static std::optional<std::string> PropertyName(std::string_view script_name);

  std::string Get(std::string_view property) const;

  /// An empty value removes the property. Returns whether the value was valid.
  bool Set(const std::string& property, std::string_view value);

  /// A length in whole pixels; 0 if it is unset or not a fixed length.
  int Pixels(std::string_view property) const;

  /// "width: 70px; height: 22px;"
  std::string Text() const;

 private:
  std::vector<std::pair<std::string, std::string>> declarations_;
};

}  // namespace kitbay::fakes
