#include "json.h"

#include <charconv>
#include <cstdint>

namespace kitbay::web_browser {
namespace {

constexpr int kDepthLimit = 32;

void WriteText(const std::wstring& text, std::string& out) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += '"';
  for (wchar_t unit : text) {
    if (unit >= 0x20 && unit < 0x7f && unit != L'"' && unit != L'\\') {
      out += static_cast<char>(unit);
      continue;
    }
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[(unit >> shift) & 0xf];
  }
  out += '"';
}

void WriteNumber(double number, std::string& out) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  out.append(digits, end);
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  Json Whole() {
    Json value = Value(0);
    SkipBlanks();
    if (!text_.empty()) throw JsonError("Text after the JSON value");
    return value;
  }

 private:
  Json Value(int depth) {
    if (depth > kDepthLimit) throw JsonError("JSON value nested too deeply");
    SkipBlanks();
    if (text_.empty()) throw JsonError("JSON text cut short");
    switch (text_.front()) {
      case '{':
        return ObjectValue(depth);
      case '[':
        return ArrayValue(depth);
      case '"':
        return TextValue();
      default:
        return Word();
    }
  }

  Json ObjectValue(int depth) {
    Json::Object members;
    Expect('{');
    if (Take('}')) return members;
    do {
      SkipBlanks();
      const std::wstring name = TextValue();
      Expect(':');
      members.insert_or_assign(std::string(name.begin(), name.end()), Value(depth + 1));
    } while (Take(','));
    Expect('}');
    return members;
  }

  Json ArrayValue(int depth) {
    Json::Array items;
    Expect('[');
    if (Take(']')) return items;
    do {
      items.push_back(Value(depth + 1));
    } while (Take(','));
    Expect(']');
    return items;
  }

  std::wstring TextValue() {
    Expect('"');
    std::wstring text;
    for (char c = Next(); c != '"'; c = Next()) {
      text += c == '\\' ? Escape() : static_cast<wchar_t>(static_cast<unsigned char>(c));
    }
    return text;
  }

  wchar_t Escape() {
    switch (const char c = Next(); c) {
      case 'b':
        return L'\b';
      case 'f':
        return L'\f';
      case 'n':
        return L'\n';
      case 'r':
        return L'\r';
      case 't':
        return L'\t';
      case 'u':
        return Unit();
      default:
        return static_cast<wchar_t>(c);
    }
  }

  wchar_t Unit() {
    std::uint16_t unit = 0;
    const char* end = text_.size() < 4 ? nullptr : text_.data() + 4;
    if (!end || std::from_chars(text_.data(), end, unit, 16).ptr != end) {
      throw JsonError("JSON escape that is none");
    }
    text_.remove_prefix(4);
    return static_cast<wchar_t>(unit);
  }

  Json Word() {
    for (const auto& [word, value] :
         {std::pair<std::string_view, Json>{"true", true}, {"false", false}, {"null", nullptr}}) {
      if (!text_.starts_with(word)) continue;
      text_.remove_prefix(word.size());
      return value;
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text_.data(), text_.data() + text_.size(), number);
    if (error != std::errc()) throw JsonError("JSON value that is none");
    text_.remove_prefix(static_cast<std::size_t>(end - text_.data()));
    return number;
  }

  void SkipBlanks() {
    while (!text_.empty() && std::string_view(" \t\r\n").find(text_.front()) != text_.npos) {
      text_.remove_prefix(1);
    }
  }

  char Next() {
    if (text_.empty()) throw JsonError("JSON text cut short");
    const char c = text_.front();
    text_.remove_prefix(1);
    return c;
  }

  bool Take(char wanted) {
    SkipBlanks();
    if (text_.empty() || text_.front() != wanted) return false;
    text_.remove_prefix(1);
    return true;
  }

  void Expect(char wanted) {
    if (!Take(wanted)) throw JsonError(std::string("JSON text without ") + wanted);
  }

  std::string_view text_;
};

}  // namespace

Json::Json(const Json& other) = default;
Json::Json(Json&& other) noexcept = default;
Json::~Json() = default;

Json& Json::operator=(Json other) noexcept {
  value_.swap(other.value_);
  return *this;
}

const Json* Json::Find(std::string_view name) const {
  const Object& members = Get<Object>();
  const auto found = members.find(name);
  return found == members.end() ? nullptr : &found->second;
}

const Json& Json::At(std::string_view name) const {
  const Json* member = Find(name);
  if (!member) throw JsonError("JSON object without " + std::string(name));
  return *member;
}

std::string Json::Write() const {
  std::string out;
  if (Is<std::nullptr_t>()) out = "null";
  if (Is<bool>()) out = Boolean() ? "true" : "false";
  if (Is<double>()) WriteNumber(Number(), out);
  if (Is<std::wstring>()) WriteText(Text(), out);
  if (Is<Array>()) {
    for (const Json& item : Get<Array>()) {
      out += out.empty() ? "[" : ",";
      out += item.Write();
    }
    out += out.empty() ? "[]" : "]";
  }
  if (Is<Object>()) {
    for (const auto& [name, value] : Get<Object>()) {
      out += out.empty() ? "{" : ",";
      WriteText(std::wstring(name.begin(), name.end()), out);
      out += ':';
      out += value.Write();
    }
    out += out.empty() ? "{}" : "}";
  }
  return out;
}

Json Json::Parse(std::string_view text) { return Parser(text).Whole(); }

}  // namespace kitbay::web_browser
