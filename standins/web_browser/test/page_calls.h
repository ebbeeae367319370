#pragma once

#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace kitbay::web_browser {

/** A VARIANT that clears itself, as an argument or a result. */
class Value {
 public:
  Value() { VariantInit(&value_); }
  Value(const wchar_t* text);
  Value(int number);
  Value(bool flag);
  Value(IDispatch* object);
  Value(const Value& other);
  Value& operator=(Value other) noexcept;
  ~Value() { VariantClear(&value_); }

  VARTYPE type() const { return value_.vt; }
  VARIANT* Receive() { return &value_; }
  const VARIANT& get() const { return value_; }

  /** These throw std::runtime_error if the value is of another type. */
  std::wstring Text() const;
  int Number() const;
  bool Flag() const;
  /** nullptr for an absent object. */
  Microsoft::WRL::ComPtr<IDispatch> Object() const;

 private:
  VARIANT value_;
};

/** A late-bound call; returns only the result code. */
HRESULT Try(IDispatch* object, const wchar_t* name, WORD flags, const std::vector<Value>& arguments,
            Value* result);

/** Late-bound calls; they throw std::runtime_error with the result code if they fail. */
Value Get(IDispatch* object, const wchar_t* name, const std::vector<Value>& arguments = {});
Value Call(IDispatch* object, const wchar_t* name, const std::vector<Value>& arguments = {});
void Put(IDispatch* object, const wchar_t* name, const Value& value);

/** The object that a property or method returns. */
Microsoft::WRL::ComPtr<IDispatch> GetObject(IDispatch* object, const wchar_t* name);
/** document.all.item(id) */
Microsoft::WRL::ComPtr<IDispatch> ById(IDispatch* document, const wchar_t* id);

}  // namespace kitbay::web_browser
