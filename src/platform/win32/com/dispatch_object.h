#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include "platform/win32/com/counted_object.h"
#include "platform/win32/com/own_type_library.h"

namespace kitbay::platform::win32 {

/// A COM object of one dual interface, created with one reference. Its late-bound side follows the
/// interface's description in the type library of the module that contains the object's code.
/// Failures are reported with descriptions.
template <typename Interface>
class DispatchObject : public CountedObject<Interface, ISupportErrorInfo> {
 public:
  DispatchObject() : type_(LoadOwnTypeInfo(__uuidof(Interface))) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    if (iid == __uuidof(Interface) || iid == __uuidof(IDispatch) || iid == __uuidof(IUnknown)) {
      *object = static_cast<Interface*>(this);
    } else if (iid == __uuidof(ISupportErrorInfo)) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    this->AddRef();
    return S_OK;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) {
      return E_POINTER;
    }
    *count = 1;
    return S_OK;
  }

  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** type) override {
    if (type == nullptr) {
      return E_POINTER;
    }
    *type = nullptr;
    if (index != 0) {
      return DISP_E_BADINDEX;
    }
    return type_.CopyTo(type);
  }

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override {
    return type_->GetIDsOfNames(names, count, members);
  }

  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* failure, UINT* bad_argument) override {
    SetErrorInfo(0, nullptr);
    return type_->Invoke(static_cast<Interface*>(this), member, flags, parameters, result, failure,
                         bad_argument);
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == __uuidof(Interface) ? S_OK : S_FALSE;
  }

 private:
  Microsoft::WRL::ComPtr<ITypeInfo> type_;
};

}  // namespace kitbay::platform::win32
