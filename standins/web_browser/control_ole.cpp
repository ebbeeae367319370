// The control as an embedded object: its site, its place in the host's window, its keys.
#include "control.h"
#include "file_drops.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kHimetricPerInch = 2540;
constexpr int kPixelsPerInch = 96;

bool IsNavigationKey(WPARAM key) {
  switch (key) {
    case VK_RETURN:
    case VK_BACK:
    case VK_DELETE:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
      return true;
    default:
      return false;
  }
}

HRESULT GiveClass(CLSID* id) {
  if (!id) {
    return E_POINTER;
  }
  *id = kControlClass;
  return S_OK;
}

}  // namespace

STDMETHODIMP Control::SetClientSite(IOleClientSite* site) {
  return Guarded([&] {
    if (!site) {
      LeavePlace();
    }
    site_.Set(site);
    is_in_use_ = site_.IsInUse();
    return S_OK;
  });
}

STDMETHODIMP Control::OnAmbientPropertyChange(DISPID) {
  is_in_use_ = site_.IsInUse();
  return S_OK;
}

STDMETHODIMP Control::GetClientSite(IOleClientSite** site) {
  if (!site) {
    return E_POINTER;
  }
  *site = site_.Get();
  if (*site) {
    (*site)->AddRef();
  }
  return S_OK;
}

STDMETHODIMP Control::Close(DWORD) {
  return Guarded([&] {
    LeavePlace();
    if (advise_) {
      advise_->SendOnClose();
    }
    return S_OK;
  });
}

STDMETHODIMP Control::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND, LPCRECT) {
  return Guarded([&]() -> HRESULT {
    if (!site_.Get() && site) {
      site_.Set(site);
    }
    switch (verb) {
      case OLEIVERB_HIDE:
        if (window_) {
          ShowWindow(window_->handle(), SW_HIDE);
        }
        return S_OK;
      case OLEIVERB_PRIMARY:
      case OLEIVERB_SHOW:
      case OLEIVERB_INPLACEACTIVATE:
        return ShowInPlace();
      case OLEIVERB_UIACTIVATE: {
        const HRESULT shown = ShowInPlace();
        if (FAILED(shown)) {
          return shown;
        }
        in_place_.UiActivate(this);
        SetFocus(window_->handle());
        return S_OK;
      }
      default:
        return OLEOBJ_S_INVALIDVERB;
    }
  });
}

HRESULT Control::ShowInPlace() {
  const HRESULT result = in_place_.Activate(site_.Get());
  if (FAILED(result)) {
    return result;
  }
  if (!window_) {
    window_ = std::make_unique<ControlWindow>(in_place_.parent(), in_place_.place(),
                                              static_cast<ControlWindowEvents&>(*this));
    ComPtr<IDropTarget> own;
    own.Attach(new FileDrops([this](const std::wstring& path) { NavigateTo(path); }));
    RegisterDragDrop(window_->handle(), site_.DropTarget(own.Get()).Get());
  }
  ShowWindow(window_->handle(), SW_SHOWNA);
  site_.Get()->ShowObject();
  return S_OK;
}

void Control::LeavePlace() {
  if (!in_place_.IsActive()) {
    return;
  }
  if (window_) {
    RevokeDragDrop(window_->handle());
  }
  window_.reset();
  in_place_.Deactivate();
}

STDMETHODIMP Control::GetUserClassID(CLSID* id) { return GiveClass(id); }

STDMETHODIMP Control::GetClassID(CLSID* id) { return GiveClass(id); }

STDMETHODIMP Control::GetUserType(DWORD, LPOLESTR* type) {
  static constexpr wchar_t kType[] = L"Web Browser Stand-in";
  if (!type) {
    return E_POINTER;
  }
  *type = static_cast<LPOLESTR>(CoTaskMemAlloc(sizeof kType));
  if (!*type) {
    return E_OUTOFMEMORY;
  }
  std::copy(std::begin(kType), std::end(kType), *type);
  return S_OK;
}

STDMETHODIMP Control::SetExtent(DWORD, SIZEL* extent) {
  if (!extent) {
    return E_POINTER;
  }
  extent_ = *extent;
  return S_OK;
}

STDMETHODIMP Control::GetExtent(DWORD, SIZEL* extent) {
  if (!extent) {
    return E_POINTER;
  }
  *extent = extent_;
  if (window_) {
    *extent = {MulDiv(size_.cx, kHimetricPerInch, kPixelsPerInch),
               MulDiv(size_.cy, kHimetricPerInch, kPixelsPerInch)};
  }
  return S_OK;
}

STDMETHODIMP Control::Advise(IAdviseSink* sink, DWORD* cookie) {
  if (!advise_) {
    const HRESULT made = CreateOleAdviseHolder(advise_.GetAddressOf());
    if (FAILED(made)) {
      return made;
    }
  }
  return advise_->Advise(sink, cookie);
}

STDMETHODIMP Control::Unadvise(DWORD cookie) {
  return advise_ ? advise_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

STDMETHODIMP Control::EnumAdvise(IEnumSTATDATA** sinks) {
  return advise_ ? advise_->EnumAdvise(sinks) : E_NOTIMPL;
}

STDMETHODIMP Control::GetMiscStatus(DWORD, DWORD* status) {
  if (!status) {
    return E_POINTER;
  }
  *status = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
            OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
  return S_OK;
}

STDMETHODIMP Control::GetWindow(HWND* window) {
  if (!window) {
    return E_POINTER;
  }
  *window = window_ ? window_->handle() : nullptr;
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP Control::InPlaceDeactivate() {
  return Guarded([&] {
    LeavePlace();
    return S_OK;
  });
}

STDMETHODIMP Control::UIDeactivate() {
  in_place_.UiDeactivate();
  return S_OK;
}

STDMETHODIMP Control::SetObjectRects(LPCRECT place, LPCRECT) {
  if (!place) {
    return E_INVALIDARG;
  }
  if (window_) {
    window_->Place(*place);
  }
  return S_OK;
}

STDMETHODIMP Control::TranslateAccelerator(LPMSG message) {
  if (!message) {
    return E_POINTER;
  }
  if (!window_ || message->hwnd != window_->handle() || message->message != WM_KEYDOWN) {
    return S_FALSE;
  }
  return Guarded([&]() -> HRESULT {
    if (site_.HoldsBack(*message)) {
      return S_OK;
    }
    if (message->wParam == VK_F5) {
      return NavigateTo(location_);
    }
    if (message->wParam == 'C' && GetKeyState(VK_CONTROL) < 0) {
      Copy();
    }
    if (message->wParam == VK_TAB && link_.IsConnected()) {
      const bool is_back = GetKeyState(VK_SHIFT) < 0;
      const bool leaves = link_.Call({{"op", "leavesByTab"}, {"back", is_back}}).at("v");
      if (leaves && site_.TakesKey(*message)) {
        return S_OK;
      }
    } else if (!IsNavigationKey(message->wParam)) {
      return S_FALSE;
    }
    TranslateMessage(message);
    DispatchMessageW(message);
    return S_OK;
  });
}

STDMETHODIMP Control::Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds,
                           LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
  if (!bounds) {
    return E_INVALIDARG;
  }
  const RECT place = {bounds->left, bounds->top, bounds->right, bounds->bottom};
  picture_.Paint(target, place);
  return S_OK;
}

STDMETHODIMP Control::GetAdvise(DWORD*, DWORD*, IAdviseSink** sink) {
  if (sink) {
    *sink = nullptr;
  }
  return S_OK;
}

}  // namespace kitbay::web_browser
