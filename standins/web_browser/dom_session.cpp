#include "dom_session.h"

// The event ids of mshtmdid.h are built on those of olectl.h.
#include <olectl.h>

#include <mshtmdid.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "dom_enumerator.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

/** A value that cannot be represented in the page's language. */
class TypeMismatch : public std::runtime_error {
 public:
  TypeMismatch() : runtime_error("Type mismatch") {}
};

const Json kNothing = Json{{"u", 1}};

HRESULT ErrorOf(const Json& answer) {
  return static_cast<HRESULT>(answer.at("e").get<std::uint32_t>());
}

DISPID EventId(const std::wstring& type) {
  static constexpr std::pair<const wchar_t*, DISPID> kEvents[] = {
      {L"click", DISPID_HTMLDOCUMENTEVENTS2_ONCLICK},
      {L"dblclick", DISPID_HTMLDOCUMENTEVENTS2_ONDBLCLICK},
      {L"mousedown", DISPID_HTMLDOCUMENTEVENTS2_ONMOUSEDOWN},
      {L"mouseup", DISPID_HTMLDOCUMENTEVENTS2_ONMOUSEUP},
      {L"contextmenu", DISPID_HTMLDOCUMENTEVENTS2_ONCONTEXTMENU},
      {L"dragstart", DISPID_HTMLDOCUMENTEVENTS2_ONDRAGSTART},
      {L"keydown", DISPID_HTMLDOCUMENTEVENTS2_ONKEYDOWN},
      {L"keypress", DISPID_HTMLDOCUMENTEVENTS2_ONKEYPRESS},
      {L"keyup", DISPID_HTMLDOCUMENTEVENTS2_ONKEYUP},
      {L"resize", DISPID_EVMETH_ONRESIZE},
  };
  for (const auto& [name, id] : kEvents) {
    if (type == name) {
      return id;
    }
  }
  return DISPID_UNKNOWN;
}

HRESULT Report(HRESULT code, const std::wstring& description, EXCEPINFO* exception) {
  if (code != E_FAIL || !exception) {
    return code;
  }
  *exception = {};
  exception->scode = code;
  exception->bstrSource = SysAllocString(L"htmlfile");
  exception->bstrDescription = SysAllocString(description.c_str());
  return DISP_E_EXCEPTION;
}

}  // namespace

ComPtr<IDispatch> DomSession::Document() {
  if (!link_) {
    return nullptr;
  }
  const Json answer = link_->Call({{"op", "document"}});
  const int generation = answer.at("g");
  if (generation == 0) {
    return nullptr;
  }
  return ObjectFor({generation, kDocumentHandle});
}

HRESULT DomSession::Invoke(DomReference object, DISPID id, WORD flags, const DISPPARAMS& parameters,
                           VARIANT* result, EXCEPINFO* exception) {
  if (id == DISPID_NEWENUM) {
    return Enumerate(object, result);
  }
  const std::wstring* name = names_.NameOf(id);
  if (!name) {
    return DISP_E_MEMBERNOTFOUND;
  }
  const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (parameters.cNamedArgs > (is_put ? 1u : 0u)) {
    return DISP_E_NONAMEDARGS;
  }
  try {
    Json arguments = Json::array();
    for (UINT i = parameters.cArgs; i > 0; --i) {
      arguments.push_back(ToJson(parameters.rgvarg[i - 1], object.generation));
    }
    // Omitted arguments are at the end.
    while (!arguments.empty() && arguments.back() == kNothing) {
      arguments.erase(arguments.size() - 1);
    }
    const Json answer = Call(object, *name, flags, std::move(arguments));
    if (answer.contains("e")) {
      return Report(ErrorOf(answer), TextOf(answer, "d"), exception);
    }
    return result ? FromJson(answer.at("v"), object.generation, result) : S_OK;
  } catch (const TypeMismatch&) {
    return DISP_E_TYPEMISMATCH;
  } catch (const LinkLost&) {
    return RPC_E_DISCONNECTED;
  }
}

HRESULT DomSession::Enumerate(DomReference collection, VARIANT* result) {
  if (!result) {
    return E_POINTER;
  }
  VariantInit(result);
  result->punkVal = new DomEnumerator(shared_from_this(), ObjectFor(collection));
  result->vt = VT_UNKNOWN;
  return S_OK;
}

HRESULT DomSession::Members(DomReference collection, ULONG position, ULONG count, VARIANT* members,
                            ULONG& got) {
  try {
    const Json answer = Call(collection, L"[members]", DISPATCH_PROPERTYGET, {position, count});
    if (answer.contains("e")) {
      return ErrorOf(answer);
    }
    for (const Json& member : answer.at("v").at("l")) {
      const HRESULT result = FromJson(member, collection.generation, members + got);
      if (FAILED(result)) {
        return result;
      }
      ++got;
    }
    return S_OK;
  } catch (const LinkLost&) {
    return RPC_E_DISCONNECTED;
  }
}

bool DomSession::FireEvent(int generation, int number, const std::wstring& type) {
  const DISPID id = EventId(type);
  const int source_handle = type == L"resize" ? kWindowHandle : kDocumentHandle;
  ComPtr<DomObject> source = FindLive({generation, source_handle});
  const int outer = std::exchange(event_, number);
  bool is_cancelled = false;
  if (source && id != DISPID_UNKNOWN) {
    ComPtr<IDispatch> event;
    if (source->WantsEventObject()) {
      event = PresentEvent(generation);
    }
    is_cancelled = source->Fire(id, event.Get());
  }
  event_ = outer;
  if (link_) {
    link_->Tell({{"op", "handled"}, {"g", generation}, {"n", number}});
  }
  return is_cancelled;
}

void DomSession::Forget(const DomObject& object) {
  live_.erase(object.reference());
  references_.erase(static_cast<const IDispatch*>(&object));
  if (link_) {
    released_.push_back(object.reference());
  }
}

Json DomSession::Call(DomReference object, const std::wstring& name, int flags, Json arguments) {
  if (!link_) {
    throw LinkLost("The control is closed");
  }
  Json released = Json::array();
  for (const DomReference& reference : std::exchange(released_, {})) {
    released.push_back(Json{reference.generation, reference.handle});
  }
  return link_->Call({{"op", "invoke"},
                      {"g", object.generation},
                      {"h", object.handle},
                      {"n", ToUtf8(name)},
                      {"k", flags},
                      {"a", std::move(arguments)},
                      {"e", event_},
                      {"r", std::move(released)}});
}

DomObject* DomSession::FindLive(DomReference reference) const {
  const auto found = live_.find(reference);
  return found == live_.end() ? nullptr : found->second;
}

ComPtr<DomObject> DomSession::ObjectFor(DomReference reference) {
  if (DomObject* live = FindLive(reference)) {
    return live;
  }
  ComPtr<DomObject> object;
  object.Attach(new DomObject(shared_from_this(), reference));
  live_.emplace(reference, object.Get());
  references_.emplace(static_cast<const IDispatch*>(object.Get()), reference);
  return object.Get();
}

Json DomSession::ToJson(const VARIANT& value, int generation) const {
  VARIANT direct;
  VariantInit(&direct);
  if (FAILED(VariantCopyInd(&direct, const_cast<VARIANT*>(&value)))) {
    throw TypeMismatch();
  }
  const std::unique_ptr<VARIANT, decltype(&VariantClear)> clear(&direct, &VariantClear);
  switch (direct.vt) {
    case VT_EMPTY:
      return kNothing;
    case VT_ERROR:
      return kNothing;
    case VT_NULL:
      return nullptr;
    case VT_BOOL:
      return direct.boolVal != VARIANT_FALSE;
    case VT_BSTR:
      return ToUtf8({direct.bstrVal, SysStringLen(direct.bstrVal)});
    case VT_UNKNOWN:
    case VT_DISPATCH: {
      if (!direct.punkVal) {
        return Json{{"h", 0}};
      }
      ComPtr<IUnknown> identity;
      direct.punkVal->QueryInterface(IID_IUnknown,
                                     reinterpret_cast<void**>(identity.GetAddressOf()));
      const auto found = references_.find(identity.Get());
      if (found == references_.end() || found->second.generation != generation) {
        throw TypeMismatch();
      }
      return Json{{"h", found->second.handle}};
    }
    default:
      if (FAILED(VariantChangeType(&direct, &direct, 0, VT_R8))) {
        throw TypeMismatch();
      }
      return direct.dblVal;
  }
}

HRESULT DomSession::FromJson(const Json& value, int generation, VARIANT* result) {
  VariantInit(result);
  if (value.is_object()) {
    if (!value.contains("h")) {
      return S_OK;
    }
    const int handle = value["h"];
    result->vt = VT_DISPATCH;
    result->pdispVal = handle == 0 ? nullptr : ObjectFor({generation, handle}).Detach();
  } else if (value.is_boolean()) {
    result->vt = VT_BOOL;
    result->boolVal = value.get<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (value.is_string()) {
    const std::wstring text = ToUtf16(value.get_ref<const std::string&>());
    result->vt = VT_BSTR;
    result->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!result->bstrVal) {
      return E_OUTOFMEMORY;
    }
  } else if (value.is_number()) {
    const double number = value;
    const bool is_long = std::trunc(number) == number && std::abs(number) <= INT32_MAX;
    result->vt = is_long ? VT_I4 : VT_R8;
    if (is_long) {
      result->lVal = static_cast<LONG>(number);
    } else {
      result->dblVal = number;
    }
  } else {
    result->vt = VT_NULL;
  }
  return S_OK;
}

ComPtr<IDispatch> DomSession::PresentEvent(int generation) {
  int handle = kDocumentHandle;
  for (const wchar_t* name : {L"parentWindow", L"event"}) {
    const Json answer = Call({generation, handle}, name, DISPATCH_PROPERTYGET, Json::array());
    if (!answer.contains("v")) {
      return nullptr;
    }
    handle = answer["v"].at("h");
    if (handle == 0) {
      return nullptr;
    }
  }
  return ObjectFor({generation, handle});
}

}  // namespace kitbay::web_browser
