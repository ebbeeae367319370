#pragma once

#include <ocidl.h>
#include <wrl/client.h>

#include <map>
#include <vector>

namespace kitbay::web_browser {

/** A source of events, part of the object that owns it, with the same lifetime. */
class ConnectionPoint : public IConnectionPoint {
 public:
  ConnectionPoint(IConnectionPointContainer* owner, REFIID events);

  STDMETHODIMP QueryInterface(REFIID id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override { return owner_->AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return owner_->Release(); }

  STDMETHODIMP GetConnectionInterface(IID* id) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  bool HasSinks() const { return !sinks_.empty(); }

  /**
   * Calls the event on every sink, with the arguments in their documented order. Returns whether a
   * sink returned the Boolean False, which cancels an event that can be cancelled.
   */
  bool Fire(DISPID event, std::vector<VARIANT> arguments);

 private:
  IConnectionPointContainer* owner_;
  IID events_;
  std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> sinks_;
  DWORD last_cookie_ = 0;
};

}  // namespace kitbay::web_browser
