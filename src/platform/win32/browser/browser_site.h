#pragma once

#include <windows.h>

#include <ocidl.h>
#include <servprov.h>
#include <shlobj.h>

#include <utility>

#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/browser/host_ui.h"
#include "platform/win32/com/object_of_parts.h"

namespace kitbay::platform::win32 {

/// The window as the frame of its active control. It offers no menus, toolbar space or status text.
class InPlaceFramePart : public IOleInPlaceFrame {
 public:
  using Interface = IOleInPlaceFrame;
  explicit InPlaceFramePart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override {
    return INPLACE_E_NOTOOLSPACE;
  }
  HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override {
    return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
  }
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override;
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

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

/// Tells the control which of a page's contents it may load and run. Texts from update sources go
/// into the page as markup, so only the page's own images are allowed.
class AmbientPropertiesPart : public EventPart<IDispatch> {
 public:
  explicit AmbientPropertiesPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;
};

/// Where the control gets the services below.
class ServiceProviderPart : public IServiceProvider {
 public:
  using Interface = IServiceProvider;
  explicit ServiceProviderPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return service == __uuidof(INewWindowManager) ? QueryInterface(id, object) : E_NOINTERFACE;
  }
};

/// Refuses every window that a page wants to open.
class NewWindowsPart : public INewWindowManager {
 public:
  using Interface = INewWindowManager;
  explicit NewWindowsPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE EvaluateNewWindow(LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, WINBOOL, DWORD,
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
