#include "connection_point.h"

#include <cguid.h>
#include <olectl.h>

#include <algorithm>

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

ConnectionPoint::ConnectionPoint(IConnectionPointContainer* owner, REFIID events)
    : owner_(owner), events_(events) {}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID id, void** result) {
  if (!result) {
    return E_POINTER;
  }
  *result = id == IID_IUnknown || id == IID_IConnectionPoint ? this : nullptr;
  if (!*result) {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* id) {
  if (!id) {
    return E_POINTER;
  }
  *id = events_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) {
    return E_POINTER;
  }
  *container = owner_;
  owner_->AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) {
    return E_POINTER;
  }
  ComPtr<IDispatch> receiver;
  if (FAILED(sink->QueryInterface(events_, reinterpret_cast<void**>(receiver.GetAddressOf()))) &&
      FAILED(
          sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(receiver.GetAddressOf())))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  *cookie = ++last_cookie_;
  sinks_.emplace(*cookie, receiver);
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  return sinks_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

bool ConnectionPoint::Fire(DISPID event, std::vector<VARIANT> arguments) {
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  bool is_cancelled = false;
  // Sinks may be added or removed while they are called.
  const std::map<DWORD, ComPtr<IDispatch>> sinks = sinks_;
  for (const auto& [cookie, sink] : sinks) {
    VARIANT result;
    VariantInit(&result);
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                 nullptr, nullptr);
    if (result.vt == VT_BOOL && result.boolVal == VARIANT_FALSE) {
      is_cancelled = true;
    }
    VariantClear(&result);
  }
  return is_cancelled;
}

}  // namespace kitbay::web_browser
