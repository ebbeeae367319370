// The control's members of IWebBrowser2, called through its table or late-bound.
#include <docobj.h>
#include <exdisp.h>

#include "control.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

HRESULT GiveText(const std::wstring& text, BSTR* result) {
  if (!result) {
    return E_POINTER;
  }
  *result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *result ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

STDMETHODIMP Control::Navigate(BSTR url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  return Guarded([&] { return NavigateTo(std::wstring(url ? url : L"", SysStringLen(url))); });
}

STDMETHODIMP Control::Navigate2(VARIANT* url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  if (!url) {
    return E_INVALIDARG;
  }
  VARIANT text;
  VariantInit(&text);
  const HRESULT changed = VariantChangeType(&text, url, 0, VT_BSTR);
  if (FAILED(changed)) {
    return changed;
  }
  const HRESULT result = Navigate(text.bstrVal, nullptr, nullptr, nullptr, nullptr);
  VariantClear(&text);
  return result;
}

STDMETHODIMP Control::QueryStatusWB(OLECMDID command, OLECMDF* status) {
  if (!status) {
    return E_POINTER;
  }
  *status = command == OLECMDID_OPTICAL_ZOOM
                ? static_cast<OLECMDF>(OLECMDF_SUPPORTED | OLECMDF_ENABLED)
                : static_cast<OLECMDF>(0);
  return S_OK;
}

STDMETHODIMP Control::ExecWB(OLECMDID command, OLECMDEXECOPT, VARIANT* input, VARIANT* output) {
  if (command != OLECMDID_OPTICAL_ZOOM) {
    return OLECMDERR_E_NOTSUPPORTED;
  }
  if (output) {
    VariantInit(output);
    output->vt = VT_I4;
    output->lVal = zoom_;
  }
  if (!input || input->vt == VT_EMPTY) {
    return S_OK;
  }
  if (input->vt != VT_I4) {
    return E_INVALIDARG;
  }
  return Guarded([&] { return SetZoom(input->lVal); });
}

STDMETHODIMP Control::get_Application(IDispatch** application) {
  if (!application) {
    return E_POINTER;
  }
  *application = static_cast<IWebBrowser2*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP Control::get_Document(IDispatch** document) {
  if (!document) {
    return E_POINTER;
  }
  *document = nullptr;
  if (!link_.IsConnected()) {
    return S_OK;
  }
  return Guarded([&] {
    try {
      *document = session_->Document().Detach();
      return S_OK;
    } catch (const LinkLost&) {
      return RPC_E_DISCONNECTED;
    }
  });
}

STDMETHODIMP Control::get_TopLevelContainer(VARIANT_BOOL* is_top) { return GetFlag(true, is_top); }

STDMETHODIMP Control::get_Type(BSTR* type) { return GiveText(L"HTML Document", type); }

STDMETHODIMP Control::get_LocationURL(BSTR* url) { return GiveText(location_, url); }

STDMETHODIMP Control::get_Busy(VARIANT_BOOL* is_busy) {
  return GetFlag(ready_state_ == READYSTATE_LOADING || ready_state_ == READYSTATE_INTERACTIVE,
                 is_busy);
}

STDMETHODIMP Control::get_Name(BSTR* name) { return GiveText(L"Web Browser Stand-in", name); }

STDMETHODIMP Control::get_HWND(SHANDLE_PTR* window) {
  if (!window) {
    return E_POINTER;
  }
  *window = reinterpret_cast<SHANDLE_PTR>(window_ ? window_->handle() : nullptr);
  return S_OK;
}

STDMETHODIMP Control::get_Visible(VARIANT_BOOL* is_visible) {
  return GetFlag(window_ && IsWindowVisible(window_->handle()), is_visible);
}

STDMETHODIMP Control::put_Visible(VARIANT_BOOL is_visible) {
  if (window_) {
    ShowWindow(window_->handle(), is_visible ? SW_SHOWNA : SW_HIDE);
  }
  return S_OK;
}

STDMETHODIMP Control::get_ReadyState(READYSTATE* state) {
  if (!state) {
    return E_POINTER;
  }
  *state = ready_state_;
  return S_OK;
}

HRESULT Control::TypeInfo(ITypeInfo** info) {
  ComPtr<ITypeLib> library;
  const HRESULT loaded = LoadRegTypeLib(LIBID_SHDocVw, 1, 1, 0, library.GetAddressOf());
  if (FAILED(loaded)) {
    return loaded;
  }
  return library->GetTypeInfoOfGuid(IID_IWebBrowser2, info);
}

STDMETHODIMP Control::GetTypeInfoCount(UINT* count) {
  if (!count) {
    return E_POINTER;
  }
  *count = 1;
  return S_OK;
}

STDMETHODIMP Control::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  return index == 0 ? TypeInfo(info) : DISP_E_BADINDEX;
}

STDMETHODIMP Control::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  ComPtr<ITypeInfo> info;
  const HRESULT found = TypeInfo(info.GetAddressOf());
  return FAILED(found) ? found : info->GetIDsOfNames(names, count, ids);
}

STDMETHODIMP Control::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) {
  ComPtr<ITypeInfo> info;
  const HRESULT found = TypeInfo(info.GetAddressOf());
  if (FAILED(found)) {
    return found;
  }
  return info->Invoke(static_cast<IWebBrowser2*>(this), id, flags, parameters, result, exception,
                      bad_argument);
}

}  // namespace kitbay::web_browser
