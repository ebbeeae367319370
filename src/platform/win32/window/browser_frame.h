#pragma once

#include <utility>

#include "platform/win32/window/browser_site_state.h"
#include "platform/win32/window/com_parts.h"

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

}  // namespace kitbay::platform::win32
