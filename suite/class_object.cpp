#include "class_object.h"

#include <memory>

#include "platform/win32/com/adopt.h"
#include "platform/win32/com/com_failure.h"

namespace ovalink {

STDMETHODIMP ClassObject::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != __uuidof(IUnknown) && iid != __uuidof(IClassFactory)) return E_NOINTERFACE;
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ClassObject::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) ClassObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP ClassObject::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  try {
    return kitbay::platform::win32::Adopt(create_())->QueryInterface(iid, object);
  } catch (...) {
    return kitbay::platform::win32::ReportCurrentException();
  }
}

STDMETHODIMP ClassObject::LockServer(BOOL lock) {
  ModuleLock::Hold(lock != FALSE);
  return S_OK;
}

}  // namespace ovalink
