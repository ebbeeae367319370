#include "fakes/fake_style.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "base/text.h"
#include "fakes/is_one_of.h"

namespace kitbay::fakes {
namespace {

enum class ValueKind { kExtent, kLength, kLengths, kDisplay, kPosition, kVisibility, kText };

struct Property {
  const char* name;
  ValueKind kind;
};

constexpr std::array kProperties = {
    Property{"background", ValueKind::kText},
    Property{"background-color", ValueKind::kText},
    Property{"border", ValueKind::kText},
    Property{"border-bottom", ValueKind::kText},
    Property{"border-color", ValueKind::kText},
    Property{"border-left", ValueKind::kText},
    Property{"border-right", ValueKind::kText},
    Property{"border-style", ValueKind::kText},
    Property{"border-top", ValueKind::kText},
    Property{"border-width", ValueKind::kLengths},
    Property{"bottom", ValueKind::kLength},
    Property{"color", ValueKind::kText},
    Property{"cursor", ValueKind::kText},
    Property{"display", ValueKind::kDisplay},
    Property{"font-family", ValueKind::kText},
    Property{"font-size", ValueKind::kLength},
    Property{"font-style", ValueKind::kText},
    Property{"font-weight", ValueKind::kText},
    Property{"height", ValueKind::kExtent},
    Property{"left", ValueKind::kLength},
    Property{"line-height", ValueKind::kText},
    Property{"margin", ValueKind::kLengths},
    Property{"margin-bottom", ValueKind::kLength},
    Property{"margin-left", ValueKind::kLength},
    Property{"margin-right", ValueKind::kLength},
    Property{"margin-top", ValueKind::kLength},
    Property{"overflow", ValueKind::kText},
    Property{"padding", ValueKind::kLengths},
    Property{"padding-bottom", ValueKind::kLength},
    Property{"padding-left", ValueKind::kLength},
    Property{"padding-right", ValueKind::kLength},
    Property{"padding-top", ValueKind::kLength},
    Property{"position", ValueKind::kPosition},
    Property{"right", ValueKind::kLength},
    Property{"text-align", ValueKind::kText},
    Property{"text-decoration", ValueKind::kText},
    Property{"top", ValueKind::kLength},
    Property{"visibility", ValueKind::kVisibility},
    Property{"white-space", ValueKind::kText},
    Property{"width", ValueKind::kExtent},
};

constexpr std::array<std::string_view, 10> kUnits = {"px", "pt", "%",  "em", "ex",
                                                     "in", "cm", "mm", "pc", "rem"};
constexpr std::array<std::string_view, 6> kLengthWords = {"auto", "inherit", "initial",
                                                          "thin", "medium",  "thick"};
constexpr std::array<std::string_view, 10> kDisplays = {
    "none",  "block",     "inline",     "inline-block", "list-item",
    "table", "table-row", "table-cell", "flex",         "inherit"};
constexpr std::array<std::string_view, 5> kPositions = {"static", "relative", "absolute", "fixed",
                                                        "inherit"};
constexpr std::array<std::string_view, 4> kVisibilities = {"visible", "hidden", "collapse",
                                                           "inherit"};

std::string TrimWhiteSpace(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n\f");
  if (first == std::string_view::npos) {
    return "";
  }
  return std::string(text.substr(first, text.find_last_not_of(" \t\r\n\f") - first + 1));
}

const Property* FindProperty(std::string_view name) {
  for (const Property& property : kProperties) {
    if (property.name == name) {
      return &property;
    }
  }
  return nullptr;
}

/// A length in the form in which styles return it; nothing if `text` is not a length.
std::optional<std::string> Length(const std::string& text) {
  const std::string value = base::ToLower(text);
  if (IsOneOf(kLengthWords, value)) {
    return value;
  }
  const std::size_t sign = value.find_first_of("+-") == 0 ? 1 : 0;
  const std::size_t end = std::min(value.find_first_not_of("0123456789.", sign), value.size());
  const std::string unit = value.substr(end);
  if (end == sign || (!unit.empty() && !IsOneOf(kUnits, unit))) {
    return std::nullopt;
  }
  return value.substr(0, end) + (unit.empty() ? "px" : unit);
}

std::optional<std::string> Lengths(const std::string& text) {
  std::string result;
  std::size_t at = 0;
  while ((at = text.find_first_not_of(' ', at)) != std::string::npos) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const auto length = Length(text.substr(at, end - at));
    if (!length) {
      return std::nullopt;
    }
    result += (result.empty() ? "" : " ") + *length;
    at = end;
  }
  return result;
}

template <typename Range>
std::optional<std::string> Word(const Range& words, const std::string& text) {
  const std::string word = base::ToLower(text);
  return IsOneOf(words, word) ? std::optional(word) : std::nullopt;
}

std::optional<std::string> Normalized(ValueKind kind, const std::string& value) {
  switch (kind) {
    case ValueKind::kExtent:
      return value.starts_with('-') ? std::nullopt : Length(value);
    case ValueKind::kLength:
      return Length(value);
    case ValueKind::kLengths:
      return Lengths(value);
    case ValueKind::kDisplay:
      return Word(kDisplays, value);
    case ValueKind::kPosition:
      return Word(kPositions, value);
    case ValueKind::kVisibility:
      return Word(kVisibilities, value);
    case ValueKind::kText:
      break;
  }
  return value;
}

/// The end of the declaration that starts at `at`: its semicolon outside quotes, or the end of the
/// text.
std::size_t EndOfDeclaration(std::string_view text, std::size_t at) {
  char quote = '\0';
  for (; at < text.size(); ++at) {
    if (quote != '\0') {
      if (text[at] == quote) {
        quote = '\0';
      }
    } else if (text[at] == '"' || text[at] == '\'') {
      quote = text[at];
    } else if (text[at] == ';') {
      break;
    }
  }
  return at;
}

}  // namespace

FakeStyle::FakeStyle(std::string_view attribute) {
  for (std::size_t at = 0; at < attribute.size();) {
    const std::size_t end = EndOfDeclaration(attribute, at);
    const std::string_view declaration = attribute.substr(at, end - at);
    at = end + 1;
    const std::size_t colon = declaration.find(':');
    if (colon == std::string_view::npos) {
      continue;
    }
    const std::string value = TrimWhiteSpace(declaration.substr(colon + 1));
    if (!value.empty()) {
      Set(base::ToLower(TrimWhiteSpace(declaration.substr(0, colon))), value);
    }
  }
}

std::optional<std::string> FakeStyle::PropertyName(std::string_view script_name) {
  const std::string wanted = base::ToLower(script_name);
  for (const Property& property : kProperties) {
    std::string name = property.name;
    std::erase(name, '-');
    if (name == wanted) {
      return property.name;
    }
  }
  return std::nullopt;
}

std::string FakeStyle::Get(std::string_view property) const {
  for (const auto& [name, value] : declarations_) {
    if (name == property) {
      return value;
    }
  }
  return "";
}

bool FakeStyle::Set(const std::string& property, std::string_view value) {
  const Property* known = FindProperty(property);
  if (known == nullptr) {
    return false;
  }
  const std::string trimmed = TrimWhiteSpace(value);
  const auto normalized =
      trimmed.empty() ? std::optional(std::string()) : Normalized(known->kind, trimmed);
  if (!normalized) {
    return false;
  }
  std::erase_if(declarations_, [&](const auto& declaration) {
    return declaration.first.starts_with(property + "-") ||
           (normalized->empty() && declaration.first == property);
  });
  if (normalized->empty()) {
    return true;
  }
  for (auto& [name, current] : declarations_) {
    if (name == property) {
      current = *normalized;
      return true;
    }
  }
  declarations_.emplace_back(property, *normalized);
  return true;
}

int FakeStyle::Pixels(std::string_view property) const {
  const std::string value = Get(property);
  const std::size_t end = std::min(value.find_first_not_of("+-0123456789."), value.size());
  const std::string unit = value.substr(end);
  const double number = std::strtod(value.substr(0, end).c_str(), nullptr);
  if (unit == "px") {
    return static_cast<int>(std::lround(number));
  }
  if (unit == "pt") {
    return static_cast<int>(std::lround(number * 96 / 72));
  }
  return 0;
}

std::string FakeStyle::Text() const {
  std::string text;
  for (const auto& [name, value] : declarations_) {
    text += (text.empty() ? "" : " ") + name + ": " + value + ";";
  }
  return text;
}

}  // namespace kitbay::fakes
