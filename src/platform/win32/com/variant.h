#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kitbay::platform::win32 {

/// Owns one automation value.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(std::string_view utf8);
  Variant(const std::string& utf8) : Variant(std::string_view(utf8)) {}
  Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
  Variant(bool value);
  Variant(std::int32_t value);

  /// An object reference; null is the empty reference ("nothing").
  Variant(IDispatch* object);

  /// An empty array. Throws `std::bad_alloc`.
  static Variant EmptyList();

  /// A reference through which a call stores a value into `target`, which must outlive it.
  static Variant ReferenceTo(Variant& target);

  ~Variant() { VariantClear(&value_); }

  /// Throws `base::Failure` if the value cannot be copied.
  Variant(const Variant& other);
  Variant(Variant&& other) noexcept;
  Variant& operator=(Variant other) noexcept;

  const VARIANT& get() const { return value_; }

  /// Where a call stores a value that this object then owns.
  VARIANT* receive();

  /// Whether it is neither a value nor an object: empty, null, or the empty object reference.
  bool IsNothing() const;

  /// The value as text, number or truth value, converted as automation does. Null and empty become
  /// "", 0 and false. Each throws `base::Failure` (13) if there is no conversion.
  std::string ToText() const;
  std::int32_t ToInteger() const;
  bool ToBoolean() const;

  /// The object that the value refers to; null for nothing. Throws `base::Failure` (13) for other
  /// values.
  Microsoft::WRL::ComPtr<IDispatch> ToObject() const;

 private:
  Variant ConvertedTo(VARTYPE type) const;

  VARIANT value_;
};

}  // namespace kitbay::platform::win32
