#include "dom_object.h"

#include <mshtml.h>
#include <olectl.h>

#include "dom_session.h"

namespace kitbay::web_browser {

DomObject::DocumentEvents::DocumentEvents(IConnectionPointContainer* owner)
    : plain(owner, __uuidof(HTMLDocumentEvents)),
      with_object(owner, __uuidof(HTMLDocumentEvents2)) {}

DomObject::DomObject(std::shared_ptr<DomSession> session, DomReference reference)
    : session_(std::move(session)), reference_(reference) {
  if (reference_.handle == kDocumentHandle) events_.emplace(this);
}

DomObject::~DomObject() { session_->Forget(*this); }

bool DomObject::Fire(DISPID id, IDispatch* event) {
  if (!events_) return false;
  VARIANT argument;
  VariantInit(&argument);
  argument.vt = VT_DISPATCH;
  argument.pdispVal = event;
  const bool by_plain = events_->plain.Fire(id, {});
  return events_->with_object.Fire(id, {argument}) || by_plain;
}

STDMETHODIMP DomObject::QueryInterface(REFIID id, void** result) {
  if (id == IID_IConnectionPointContainer && !events_) {
    *result = nullptr;
    return E_NOINTERFACE;
  }
  return ComObject::QueryInterface(id, result);
}

STDMETHODIMP DomObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP DomObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  return Guarded([&] {
    ids[0] = session_->names().IdOf(names[0]);
    // Arguments have no names here.
    for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  });
}

STDMETHODIMP DomObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (!parameters) return E_INVALIDARG;
  return Guarded(
      [&] { return session_->Invoke(reference_, id, flags, *parameters, result, exception); });
}

STDMETHODIMP DomObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id == __uuidof(HTMLDocumentEvents)) *point = &events_->plain;
  if (id == __uuidof(HTMLDocumentEvents2)) *point = &events_->with_object;
  if (!*point) return CONNECT_E_NOCONNECTION;
  AddRef();
  return S_OK;
}

}  // namespace kitbay::web_browser
