#pragma once

#include <windows.h>

#include <mshtmhst.h>

#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/com/object_of_parts.h"

namespace kitbay::platform::win32 {

/// What the control shows around the page: no border, and no menu but "Copy". The browser's own
/// keys are off, and nothing can be dropped on the page.
class HostUiPart : public IDocHostUIHandler {
 public:
  using Interface = IDocHostUIHandler;
  explicit HostUiPart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  HRESULT STDMETHODCALLTYPE ShowContextMenu(DWORD menu, POINT* place, IUnknown* commands,
                                            IDispatch* object) override;
  HRESULT STDMETHODCALLTYPE GetHostInfo(DOCHOSTUIINFO* info) override;
  HRESULT STDMETHODCALLTYPE ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*,
                                   IOleInPlaceFrame*, IOleInPlaceUIWindow*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE HideUI() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE UpdateUI() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(WINBOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(WINBOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(WINBOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, WINBOOL) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message, const GUID* group,
                                                 DWORD command) override;
  HRESULT STDMETHODCALLTYPE GetOptionKeyPath(LPOLESTR* key, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget* offered, IDropTarget** used) override;
  HRESULT STDMETHODCALLTYPE GetExternal(IDispatch** external) override;
  HRESULT STDMETHODCALLTYPE TranslateUrl(DWORD, LPWSTR, LPWSTR* translated) override;
  HRESULT STDMETHODCALLTYPE FilterDataObject(IDataObject*, IDataObject** filtered) override;

 private:
  BrowserSiteStateRef state_;
};

}  // namespace kitbay::platform::win32
