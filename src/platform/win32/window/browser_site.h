#pragma once

#include <windows.h>

#include <ocidl.h>

#include "platform/win32/window/ambient_properties.h"
#include "platform/win32/window/browser_frame.h"
#include "platform/win32/window/browser_site_state.h"
#include "platform/win32/window/com_parts.h"
#include "platform/win32/window/host_ui.h"
#include "platform/win32/window/new_windows.h"

namespace kitbay::platform::win32 {

class ClientSitePart : public IOleClientSite {
 public:
  using Interface = IOleClientSite;
  explicit ClientSitePart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
  HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
};

/// The control's place in the window. Only the window decides on it.
class InPlaceSitePart : public IOleInPlaceSite {
 public:
  using Interface = IOleInPlaceSite;
  explicit InPlaceSitePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                             IOleInPlaceUIWindow** document, LPRECT place,
                                             LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override;

 private:
  BrowserSiteStateRef state_;
};

/// The keys that the control leaves to its container: Tab past the end of the page.
class ControlSitePart : public IOleControlSite {
 public:
  using Interface = IOleControlSite;
  explicit ControlSitePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** control) override;
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

 private:
  BrowserSiteStateRef state_;
};

/// The container's side of the browser control.
class BrowserSite final
    : public ObjectOfParts<ClientSitePart, InPlaceSitePart, ControlSitePart, AmbientPropertiesPart,
                           HostUiPart, ServiceProviderPart, NewWindowsPart> {
 public:
  explicit BrowserSite(const BrowserSiteStateRef& state) : ObjectOfParts(state) {}
};

}  // namespace kitbay::platform::win32
