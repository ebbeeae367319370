#pragma once

#include <windows.h>

#include <objbase.h>

#include <functional>
#include <utility>

#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {

/// The class object of a class, created with one reference.
class ClassFactory : public CountedObject<IClassFactory> {
 public:
  /// Creates an object and returns its interface. May throw.
  using Create = std::function<HRESULT(REFIID iid, void** object)>;

  explicit ClassFactory(Create create) : create_(std::move(create)) {}

  /// From now on, clients that still hold the class object cannot create anything.
  void Stop() { create_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IClassFactory)) {
      return E_NOINTERFACE;
    }
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    if (outer != nullptr) {
      return CLASS_E_NOAGGREGATION;
    }
    if (!create_) {
      return CO_E_SERVER_STOPPING;
    }
    try {
      return create_(iid, object);
    } catch (...) {
      return ReportCurrentException();
    }
  }

  /// The program lives as long as its main window, whatever clients hold.
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  Create create_;
};

}  // namespace kitbay::platform::win32
