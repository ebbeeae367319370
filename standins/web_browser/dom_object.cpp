#include "dom_object.h"

#include <mshtml.h>
#include <olectl.h>

#include "dom_session.h"

namespace kitbay::web_browser {

DomObject::Events::Events(IConnectionPointContainer* owner, REFIID plain_id, REFIID with_object_id)
    : plain_id(plain_id),
      with_object_id(with_object_id),
      plain(owner, plain_id),
      with_object(owner, with_object_id) {}

DomObject::DomObject(std::shared_ptr<DomSession> session, DomReference reference)
    : session_(std::move(session)), reference_(reference) {
  if (reference_.handle == kDocumentHandle) {
    events_.emplace(this, __uuidof(HTMLDocumentEvents), __uuidof(HTMLDocumentEvents2));
  } else if (reference_.handle == kWindowHandle) {
    events_.emplace(this, __uuidof(HTMLWindowEvents), __uuidof(HTMLWindowEvents2));
  }
}

DomObject::~DomObject() { session_->Forget(*this); }

bool DomObject::Fire(DISPID id, IDispatch* event) {
  if (!events_) {
    return false;
  }
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
  if (!count) {
    return E_POINTER;
  }
  *count = 0;
  return S_OK;
}

STDMETHODIMP DomObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) {
    return E_INVALIDARG;
  }
  return Guarded([&] {
    ids[0] = session_->names().IdOf(names[0]);
    // Arguments have no names here.
    for (UINT i = 1; i < count; ++i) {
      ids[i] = DISPID_UNKNOWN;
    }
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  });
}

STDMETHODIMP DomObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (!parameters) {
    return E_INVALIDARG;
  }
  return Guarded(
      [&] { return session_->Invoke(reference_, id, flags, *parameters, result, exception); });
}

STDMETHODIMP DomObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) {
    return E_POINTER;
  }
  *point = nullptr;
  if (id == events_->plain_id) {
    *point = &events_->plain;
  }
  if (id == events_->with_object_id) {
    *point = &events_->with_object;
  }
  if (!*point) {
    return CONNECT_E_NOCONNECTION;
  }
  AddRef();
  return S_OK;
}

}  // namespace kitbay::web_browser
