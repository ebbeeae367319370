#pragma once

#include <exdisp.h>
#include <ocidl.h>
#include <oleidl.h>
#include <unknwn.h>

#include <exception>

namespace kitbay::web_browser {

/** Whether QueryInterface returns a pointer to Interface for an id: its own or that of a base. */
template <typename Interface>
bool Answers(REFIID id) {
  return id == __uuidof(Interface);
}
template <>
inline bool Answers<IWebBrowser2>(REFIID id) {
  return id == IID_IWebBrowser2 || id == IID_IWebBrowserApp || id == IID_IWebBrowser ||
         id == IID_IDispatch;
}
template <>
inline bool Answers<IOleInPlaceObject>(REFIID id) {
  return id == IID_IOleInPlaceObject || id == IID_IOleWindow;
}
template <>
inline bool Answers<IPersistStreamInit>(REFIID id) {
  return id == IID_IPersistStreamInit || id == IID_IPersist;
}
template <>
inline bool Answers<IViewObject2>(REFIID id) {
  return id == IID_IViewObject2 || id == IID_IViewObject;
}

/** Reference counting and QueryInterface for a list of interfaces; the first is the identity. */
template <typename First, typename... Others>
class ComObject : public First, public Others... {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    if (!result) {
      return E_POINTER;
    }
    *result = nullptr;
    if (id == IID_IUnknown) {
      *result = static_cast<First*>(this);
    }
    if (!*result && Answers<First>(id)) {
      *result = static_cast<First*>(this);
    }
    (Find<Others>(id, result), ...);
    if (!*result) {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

 protected:
  ComObject() = default;
  virtual ~ComObject() = default;

 private:
  template <typename Interface>
  void Find(REFIID id, void** result) {
    if (!*result && Answers<Interface>(id)) {
      *result = static_cast<Interface*>(this);
    }
  }

  ULONG references_ = 1;  // Apartment-threaded.
};

/** Runs the body of a COM method; no exception escapes from it. */
template <typename Body>
HRESULT Guarded(Body body) noexcept {
  try {
    return body();
  } catch (const std::exception&) {
    return E_FAIL;
  }
}

}  // namespace kitbay::web_browser
