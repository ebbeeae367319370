#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kitbay::web_browser {

/** A text that is not JSON, or a member that is missing or of another type. */
class JsonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/** One JSON value. Texts are UTF-16 units, well paired or not. */
class Json {
 public:
  using Array = std::vector<Json>;
  using Object = std::map<std::string, Json, std::less<>>;

  Json() = default;
  Json(std::nullptr_t) {}
  Json(bool value) : value_(value) {}
  Json(int value) : value_(static_cast<double>(value)) {}
  Json(double value) : value_(value) {}
  Json(const char* value) : value_(std::wstring(value, value + std::string_view(value).size())) {}
  Json(std::wstring value) : value_(std::move(value)) {}
  Json(Array value) : value_(std::move(value)) {}
  Json(Object value) : value_(std::move(value)) {}

  // Not inline, because gcc 12 takes the variant's inactive members for uninitialised ones.
  Json(const Json& other);
  Json(Json&& other) noexcept;
  Json& operator=(Json other) noexcept;
  ~Json();

  template <typename T>
  bool Is() const {
    return std::holds_alternative<T>(value_);
  }

  /** Throws JsonError if the value is of another type. */
  bool Boolean() const { return Get<bool>(); }
  double Number() const { return Get<double>(); }
  int Integer() const { return static_cast<int>(Get<double>()); }
  const std::wstring& Text() const { return Get<std::wstring>(); }
  const Array& Items() const { return Get<Array>(); }

  /** A member of an object; nullptr if it is missing. */
  const Json* Find(std::string_view name) const;
  /** A member of an object; throws JsonError if it is missing. */
  const Json& At(std::string_view name) const;

  /** One line of ASCII. */
  std::string Write() const;
  /** Throws JsonError. */
  static Json Parse(std::string_view text);

 private:
  template <typename T>
  const T& Get() const {
    if (!Is<T>()) throw JsonError("JSON value of another type");
    return std::get<T>(value_);
  }

  std::variant<std::nullptr_t, bool, double, std::wstring, Array, Object> value_ = nullptr;
};

}  // namespace kitbay::web_browser
