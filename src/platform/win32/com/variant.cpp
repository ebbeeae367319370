#include "platform/win32/com/variant.h"

#include <new>
#include <utility>

#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

using Microsoft::WRL::ComPtr;

Variant::Variant(std::string_view utf8) : Variant() {
  value_.bstrVal = Bstr(utf8).release();
  value_.vt = VT_BSTR;
}

Variant::Variant(bool value) : Variant() {
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::int32_t value) : Variant() {
  value_.vt = VT_I4;
  value_.lVal = value;
}

Variant::Variant(IDispatch* object) : Variant() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object;
  if (object != nullptr) {
    object->AddRef();
  }
}

Variant Variant::EmptyList() {
  Variant list;
  list.value_.parray = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  if (list.value_.parray == nullptr) {
    throw std::bad_alloc();
  }
  list.value_.vt = VT_ARRAY | VT_VARIANT;
  return list;
}

Variant Variant::ReferenceTo(Variant& target) {
  Variant reference;
  reference.value_.vt = VT_BYREF | VT_VARIANT;
  reference.value_.pvarVal = target.receive();
  return reference;
}

Variant::Variant(const Variant& other) : Variant() {
  Check(VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)));
}

Variant::Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }

Variant& Variant::operator=(Variant other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

VARIANT* Variant::receive() {
  VariantClear(&value_);
  return &value_;
}

bool Variant::IsNothing() const {
  switch (value_.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return true;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return value_.punkVal == nullptr;
    default:
      return false;
  }
}

std::string Variant::ToText() const {
  if (value_.vt == VT_NULL) {
    return {};
  }
  Variant text = ConvertedTo(VT_BSTR);
  Bstr owned;
  *owned.receive() = std::exchange(text.value_.bstrVal, nullptr);
  return owned.ToText();
}

std::int32_t Variant::ToInteger() const {
  if (value_.vt == VT_NULL) {
    return 0;
  }
  return ConvertedTo(VT_I4).value_.lVal;
}

bool Variant::ToBoolean() const {
  if (value_.vt == VT_NULL) {
    return false;
  }
  return ConvertedTo(VT_BOOL).value_.boolVal != VARIANT_FALSE;
}

ComPtr<IDispatch> Variant::ToObject() const {
  if (IsNothing()) {
    return nullptr;
  }
  if (value_.vt != VT_DISPATCH && value_.vt != VT_UNKNOWN) {
    throw FailureOf(DISP_E_TYPEMISMATCH);
  }
  ComPtr<IDispatch> object;
  if (FAILED(value_.punkVal->QueryInterface(IID_PPV_ARGS(&object)))) {
    throw FailureOf(DISP_E_TYPEMISMATCH);
  }
  return object;
}

Variant Variant::ConvertedTo(VARTYPE type) const {
  Variant converted;
  Check(
      VariantChangeType(&converted.value_, const_cast<VARIANT*>(&value_), VARIANT_ALPHABOOL, type));
  return converted;
}

}  // namespace kitbay::platform::win32
