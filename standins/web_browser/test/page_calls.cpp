#include "page_calls.h"

#include <cguid.h>

#include <stdexcept>
#include <utility>

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

[[noreturn]] void Fail(const std::string& what, long code) {
  char digits[16];
  std::snprintf(digits, sizeof digits, " 0x%08lx", static_cast<unsigned long>(code));
  throw std::runtime_error(what + digits);
}

std::string Narrow(const wchar_t* text) {
  std::string narrow;
  for (; *text; ++text) {
    narrow += static_cast<char>(*text);
  }
  return narrow;
}

Value Checked(IDispatch* object, const wchar_t* name, WORD flags,
              const std::vector<Value>& arguments) {
  Value result;
  const HRESULT code = Try(object, name, flags, arguments, &result);
  if (FAILED(code)) {
    Fail(Narrow(name), code);
  }
  return result;
}

}  // namespace

Value::Value(const wchar_t* text) : Value() {
  value_.vt = VT_BSTR;
  value_.bstrVal = SysAllocString(text);
}

Value::Value(int number) : Value() {
  value_.vt = VT_I4;
  value_.lVal = number;
}

Value::Value(bool flag) : Value() {
  value_.vt = VT_BOOL;
  value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Value::Value(IDispatch* object) : Value() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object;
  if (object) {
    object->AddRef();
  }
}

Value::Value(const Value& other) : Value() {
  if (FAILED(VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)))) {
    Fail("VariantCopy", 0);
  }
}

Value& Value::operator=(Value other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

std::wstring Value::Text() const {
  if (value_.vt != VT_BSTR) {
    Fail("no text but type", value_.vt);
  }
  return std::wstring(value_.bstrVal ? value_.bstrVal : L"", SysStringLen(value_.bstrVal));
}

int Value::Number() const {
  if (value_.vt != VT_I4) {
    Fail("no number but type", value_.vt);
  }
  return value_.lVal;
}

bool Value::Flag() const {
  if (value_.vt != VT_BOOL) {
    Fail("no flag but type", value_.vt);
  }
  return value_.boolVal != VARIANT_FALSE;
}

ComPtr<IDispatch> Value::Object() const {
  if (value_.vt != VT_DISPATCH) {
    Fail("no object but type", value_.vt);
  }
  return value_.pdispVal;
}

HRESULT Try(IDispatch* object, const wchar_t* name, WORD flags, const std::vector<Value>& arguments,
            Value* result) {
  if (!object) {
    return E_POINTER;
  }
  std::wstring spelling = name;
  LPOLESTR names = spelling.data();
  DISPID id = DISPID_UNKNOWN;
  const HRESULT found = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(found)) {
    return found;
  }
  std::vector<VARIANT> reversed;
  for (auto value = arguments.rbegin(); value != arguments.rend(); ++value) {
    reversed.push_back(value->get());
  }
  DISPID put = DISPID_PROPERTYPUT;
  const bool is_put = flags == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters = {reversed.data(), is_put ? &put : nullptr,
                           static_cast<UINT>(reversed.size()), is_put ? 1u : 0u};
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result->Receive(),
                        nullptr, nullptr);
}

Value Get(IDispatch* object, const wchar_t* name, const std::vector<Value>& arguments) {
  return Checked(object, name, DISPATCH_PROPERTYGET, arguments);
}

Value Call(IDispatch* object, const wchar_t* name, const std::vector<Value>& arguments) {
  return Checked(object, name, DISPATCH_METHOD, arguments);
}

void Put(IDispatch* object, const wchar_t* name, const Value& value) {
  Checked(object, name, DISPATCH_PROPERTYPUT, {value});
}

ComPtr<IDispatch> GetObject(IDispatch* object, const wchar_t* name) {
  return Get(object, name).Object();
}

ComPtr<IDispatch> ById(IDispatch* document, const wchar_t* id) {
  return Call(GetObject(document, L"all").Get(), L"item", {id}).Object();
}

}  // namespace kitbay::web_browser
