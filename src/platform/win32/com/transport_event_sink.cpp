#include "platform/win32/com/transport_event_sink.h"

#include <cwchar>

#include "ov_transport_events.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/variant.h"

namespace kitbay::platform::win32 {
namespace {

// The members' numbers in the event interface.
constexpr DISPID kMessage = 1;
constexpr DISPID kException = 2;
constexpr UINT kTexts = 4;

/// The text at `position`, counted from 0; arguments arrive last first, perhaps by reference.
std::string TextAt(const DISPPARAMS& parameters, UINT position) {
  Variant value;
  Check(VariantCopyInd(value.receive(), &parameters.rgvarg[parameters.cArgs - 1 - position]));
  return value.ToText();
}

}  // namespace

STDMETHODIMP TransportEventSink::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (iid != __uuidof(IUnknown) && iid != __uuidof(IDispatch) &&
      iid != __uuidof(::OvTransportEvents)) {
    return E_NOINTERFACE;
  }
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP TransportEventSink::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) {
    return E_POINTER;
  }
  *count = 0;
  return S_OK;
}

STDMETHODIMP TransportEventSink::GetTypeInfo(UINT, LCID, ITypeInfo** type) {
  if (type == nullptr) {
    return E_POINTER;
  }
  *type = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP TransportEventSink::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                               DISPID* members) {
  if (names == nullptr || members == nullptr || count == 0) {
    return E_INVALIDARG;
  }
  for (UINT argument = 1; argument < count; ++argument) {
    members[argument] = DISPID_UNKNOWN;
  }
  if (_wcsicmp(names[0], L"Message") == 0) {
    members[0] = kMessage;
  } else if (_wcsicmp(names[0], L"Exception") == 0) {
    members[0] = kException;
  } else {
    members[0] = DISPID_UNKNOWN;
  }
  return members[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP TransportEventSink::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                        VARIANT*, EXCEPINFO*, UINT*) {
  if (parameters == nullptr) {
    return E_INVALIDARG;
  }
  if (receiver_ == nullptr || (member != kMessage && member != kException)) {
    return S_OK;
  }
  if (parameters->cArgs < kTexts) {
    return DISP_E_BADPARAMCOUNT;
  }
  try {
    if (member == kMessage) {
      receiver_->Message(TextAt(*parameters, 1), TextAt(*parameters, 2), TextAt(*parameters, 3));
    } else {
      receiver_->Exception(TextAt(*parameters, 2), TextAt(*parameters, 3));
    }
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

}  // namespace kitbay::platform::win32
