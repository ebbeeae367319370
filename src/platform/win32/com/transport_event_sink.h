#pragma once

#include <windows.h>

#include <oleauto.h>

#include "platform/suite_objects.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {

/// Passes the events of a suite's object on to a receiver. Created with one reference, which the
/// object's client holds in addition to the suite's.
class TransportEventSink : public CountedObject<IDispatch> {
 public:
  /// `receiver` must live until `Disconnect`.
  explicit TransportEventSink(OvTransportEvents& receiver) : receiver_(&receiver) {}

  /// From now on, events that still arrive are dropped.
  void Disconnect() { receiver_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** type) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* members) override;

  /// Refuses events with fewer texts than the receiver takes. Ignores additional texts, and events
  /// other than Message and Exception.
  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* failure, UINT* bad_argument) override;

 private:
  OvTransportEvents* receiver_;
};

}  // namespace kitbay::platform::win32
