#include "host_site.h"

#include <cguid.h>
#include <mshtmdid.h>
#include <mshtmhst.h>
#include <ocidl.h>
#include <olectl.h>
#include <servprov.h>
#include <shlobj.h>

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

bool HostSite::Ambient(DISPID property, VARTYPE type, VARIANT* value) const {
  const ComPtr<IDispatch> ambient = As<IDispatch>(IID_IDispatch);
  VariantInit(value);
  DISPPARAMS none = {};
  return ambient &&
         SUCCEEDED(ambient->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                   &none, value, nullptr, nullptr)) &&
         SUCCEEDED(VariantChangeType(value, value, 0, type));
}

std::optional<int> HostSite::DownloadControl() const {
  VARIANT value;
  if (!Ambient(DISPID_AMBIENT_DLCONTROL, VT_I4, &value)) {
    return std::nullopt;
  }
  return value.lVal;
}

bool HostSite::IsInUse() const {
  VARIANT value;
  return !Ambient(DISPID_AMBIENT_USERMODE, VT_BOOL, &value) || value.boolVal != VARIANT_FALSE;
}

DWORD HostSite::Flags() const {
  const ComPtr<IDocHostUIHandler> handler = As<IDocHostUIHandler>(IID_IDocHostUIHandler);
  DOCHOSTUIINFO info = {};
  info.cbSize = sizeof info;
  return handler && SUCCEEDED(handler->GetHostInfo(&info)) ? info.dwFlags : 0;
}

ComPtr<IDropTarget> HostSite::DropTarget(IDropTarget* own) const {
  const ComPtr<IDocHostUIHandler> handler = As<IDocHostUIHandler>(IID_IDocHostUIHandler);
  ComPtr<IDropTarget> used;
  if (handler && handler->GetDropTarget(own, used.GetAddressOf()) == S_OK && used) {
    return used;
  }
  return own;
}

bool HostSite::TakesKey(MSG& message) const {
  const ComPtr<IOleControlSite> site = As<IOleControlSite>(IID_IOleControlSite);
  const DWORD modifiers = (GetKeyState(VK_SHIFT) < 0 ? 1u : 0u) |  // KEYMOD_SHIFT
                          (GetKeyState(VK_CONTROL) < 0 ? 2u : 0u) |
                          (GetKeyState(VK_MENU) < 0 ? 4u : 0u);
  return site && site->TranslateAccelerator(&message, modifiers) == S_OK;
}

bool HostSite::ReplacesMenu(int kind, POINT place, IUnknown* commands) const {
  const ComPtr<IDocHostUIHandler> handler = As<IDocHostUIHandler>(IID_IDocHostUIHandler);
  return handler &&
         handler->ShowContextMenu(static_cast<DWORD>(kind), &place, commands, nullptr) == S_OK;
}

bool HostSite::HoldsBack(MSG& message) const {
  const ComPtr<IDocHostUIHandler> handler = As<IDocHostUIHandler>(IID_IDocHostUIHandler);
  return handler && handler->TranslateAccelerator(&message, nullptr, 0) == S_OK;
}

bool HostSite::AllowsWindow(const std::wstring& url, const std::wstring& from_url) const {
  const ComPtr<IServiceProvider> services = As<IServiceProvider>(IID_IServiceProvider);
  ComPtr<INewWindowManager> windows;
  if (!services || FAILED(services->QueryService(__uuidof(INewWindowManager),
                                                 IID_PPV_ARGS(windows.GetAddressOf())))) {
    return true;
  }
  return SUCCEEDED(
      windows->EvaluateNewWindow(url.c_str(), L"", from_url.c_str(), L"", FALSE, 0, 0));
}

void HostSite::FocusChanged(bool has_focus) const {
  const ComPtr<IOleControlSite> site = As<IOleControlSite>(IID_IOleControlSite);
  if (site) {
    site->OnFocus(has_focus);
  }
}

}  // namespace kitbay::web_browser
