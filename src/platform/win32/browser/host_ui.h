#pragma once

#include <windows.h>

#include <mshtmhst.h>

#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {

/// What the control shows around the page: no border, and no menu but "Copy". The browser's own
/// keys are off, and nothing can be dropped on the page.
class HostUiPart : public IDocHostUIHandler {
 public:
  using Interface = IDocHostUIHandler;
  explicit HostUiPart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  STDMETHODIMP ShowContextMenu(DWORD menu, POINT* place, IUnknown* commands,
                               IDispatch* object) override;
  STDMETHODIMP GetHostInfo(DOCHOSTUIINFO* info) override;
  STDMETHODIMP ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*, IOleInPlaceFrame*,
                      IOleInPlaceUIWindow*) override {
    return S_OK;
  }
  STDMETHODIMP HideUI() override { return S_OK; }
  STDMETHODIMP UpdateUI() override { return S_OK; }
  STDMETHODIMP EnableModeless(WINBOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(WINBOOL) override { return S_OK; }
  STDMETHODIMP OnFrameWindowActivate(WINBOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, WINBOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG message, const GUID* group, DWORD command) override;
  STDMETHODIMP GetOptionKeyPath(LPOLESTR* key, DWORD) override;
  STDMETHODIMP GetDropTarget(IDropTarget* offered, IDropTarget** used) override;
  STDMETHODIMP GetExternal(IDispatch** external) override;
  STDMETHODIMP TranslateUrl(DWORD, LPWSTR, LPWSTR* translated) override;
  STDMETHODIMP FilterDataObject(IDataObject*, IDataObject** filtered) override;

 private:
  BrowserSiteStateRef state_;
};

}  // namespace kitbay::platform::win32
