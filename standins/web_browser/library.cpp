// The library's entry points: it creates controls for whoever requests the WebBrowser class.
#include "control.h"

namespace kitbay::web_browser {
namespace {

class Factory final : public ComObject<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (!result) {
      return E_POINTER;
    }
    *result = nullptr;
    if (outer) {
      return CLASS_E_NOAGGREGATION;
    }
    return Guarded([&] {
      auto* control = new Control();
      const HRESULT found = control->QueryInterface(id, result);
      static_cast<IWebBrowser2*>(control)->Release();
      return found;
    });
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace
}  // namespace kitbay::web_browser

STDAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** result) {
  using kitbay::web_browser::Factory;
  if (!result) {
    return E_POINTER;
  }
  *result = nullptr;
  if (class_id != kitbay::web_browser::kControlClass) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  return kitbay::web_browser::Guarded([&] {
    auto* factory = new Factory();
    const HRESULT found = factory->QueryInterface(id, result);
    factory->Release();
    return found;
  });
}

/** Stays loaded, because a control's reading thread may still be about to end. */
STDAPI DllCanUnloadNow() { return S_FALSE; }
