#pragma once

#include <windows.h>

#include <ocidl.h>
#include <servprov.h>
#include <shlobj.h>

#include <utility>

#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/browser/host_ui.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {

/// The window as the frame of its active control. It offers no menus, toolbar space or status text.
class InPlaceFramePart : public IOleInPlaceFrame {
 public:
  using Interface = IOleInPlaceFrame;
  explicit InPlaceFramePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS widths) override {
    return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
  }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override;
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 private:
  BrowserSiteStateRef state_;
};

class BrowserFrame final : public ObjectOfParts<InPlaceFramePart> {
 public:
  explicit BrowserFrame(const BrowserSiteStateRef& state) : ObjectOfParts(state) {}
};

class ClientSitePart : public IOleClientSite {
 public:
  using Interface = IOleClientSite;
  explicit ClientSitePart(const BrowserSiteStateRef&) {}

  STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  STDMETHODIMP GetContainer(IOleContainer** container) override;
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
};

/// The control's place in the window. Only the window decides on it.
class InPlaceSitePart : public IOleInPlaceSite {
 public:
  using Interface = IOleInPlaceSite;
  explicit InPlaceSitePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override;

 private:
  BrowserSiteStateRef state_;
};

/// The keys that the control leaves to its container: Tab past the end of the page.
class ControlSitePart : public IOleControlSite {
 public:
  using Interface = IOleControlSite;
  explicit ControlSitePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
  STDMETHODIMP GetExtendedControl(IDispatch** control) override;
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
  STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
  STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

 private:
  BrowserSiteStateRef state_;
};

/// Tells the control which of a page's contents it may load and run. Texts from update sources go
/// into the page as markup, so only the page's own images are allowed.
class AmbientPropertiesPart : public EventPart<IDispatch> {
 public:
  explicit AmbientPropertiesPart(const BrowserSiteStateRef&) {}

  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                      EXCEPINFO*, UINT*) override;
};

/// Where the control gets the services below.
class ServiceProviderPart : public IServiceProvider {
 public:
  using Interface = IServiceProvider;
  explicit ServiceProviderPart(const BrowserSiteStateRef&) {}

  STDMETHODIMP QueryService(REFGUID service, REFIID id, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    return service == __uuidof(INewWindowManager) ? QueryInterface(id, object) : E_NOINTERFACE;
  }
};

/// Refuses every window that a page wants to open.
class NewWindowsPart : public INewWindowManager {
 public:
  using Interface = INewWindowManager;
  explicit NewWindowsPart(const BrowserSiteStateRef&) {}

  STDMETHODIMP EvaluateNewWindow(LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, WINBOOL, DWORD,
                                 DWORD) override {
    return E_FAIL;
  }
};

/// The container's side of the browser control.
class BrowserSite final
    : public ObjectOfParts<ClientSitePart, InPlaceSitePart, ControlSitePart, AmbientPropertiesPart,
                           HostUiPart, ServiceProviderPart, NewWindowsPart> {
 public:
  explicit BrowserSite(const BrowserSiteStateRef& state) : ObjectOfParts(state) {}
};

}  // namespace kitbay::platform::win32
