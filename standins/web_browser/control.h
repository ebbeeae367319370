#pragma once

#include <memory>
#include <string>

#include "browser_events.h"
#include "control_window.h"
#include "dom_session.h"
#include "helper_link.h"
#include "host_site.h"
#include "in_place.h"
#include "ui_queue.h"
#include "unused_slots.h"

namespace kitbay::web_browser {

/** The class id of the system's WebBrowser control. */
inline constexpr CLSID kControlClass = {
    0x8856F961, 0x340A, 0x11D0, {0xA9, 0x6B, 0x00, 0xC0, 0x4F, 0xD7, 0x05, 0xA2}};

/** The optical zoom of an unzoomed page, in percent. */
inline constexpr int kUnzoomed = 100;

/** The control as its host sees it, for one apartment. */
class Control final
    : public ComObject<WebBrowserSlots, OleObjectSlots, IOleInPlaceObject, IOleInPlaceActiveObject,
                       IOleControl, IPersistStreamInit, IViewObject2, IConnectionPointContainer>,
      private ControlWindowEvents {
 public:
  /** Starts the helper. Throws LinkLost. */
  Control();

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;

  // IWebBrowser2
  STDMETHODIMP Navigate(BSTR url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override;
  STDMETHODIMP Navigate2(VARIANT* url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override;
  STDMETHODIMP Stop() override { return S_OK; }
  STDMETHODIMP QueryStatusWB(OLECMDID command, OLECMDF* status) override;
  STDMETHODIMP ExecWB(OLECMDID command, OLECMDEXECOPT option, VARIANT* input,
                      VARIANT* output) override;
  STDMETHODIMP get_Application(IDispatch** application) override;
  STDMETHODIMP get_Document(IDispatch** document) override;
  STDMETHODIMP get_TopLevelContainer(VARIANT_BOOL* is_top) override;
  STDMETHODIMP get_Type(BSTR* type) override;
  STDMETHODIMP get_LocationURL(BSTR* url) override;
  STDMETHODIMP get_Busy(VARIANT_BOOL* is_busy) override;
  STDMETHODIMP get_Name(BSTR* name) override;
  STDMETHODIMP get_HWND(SHANDLE_PTR* window) override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* is_visible) override;
  STDMETHODIMP put_Visible(VARIANT_BOOL is_visible) override;
  STDMETHODIMP get_ReadyState(READYSTATE* state) override;
  STDMETHODIMP get_Offline(VARIANT_BOOL* value) override { return GetFlag(is_offline_, value); }
  STDMETHODIMP put_Offline(VARIANT_BOOL value) override { return PutFlag(value, is_offline_); }
  STDMETHODIMP get_Silent(VARIANT_BOOL* value) override { return GetFlag(is_silent_, value); }
  STDMETHODIMP put_Silent(VARIANT_BOOL value) override { return PutFlag(value, is_silent_); }
  STDMETHODIMP get_RegisterAsBrowser(VARIANT_BOOL* value) override {
    return GetFlag(is_browser_, value);
  }
  STDMETHODIMP put_RegisterAsBrowser(VARIANT_BOOL value) override {
    return PutFlag(value, is_browser_);
  }
  STDMETHODIMP get_RegisterAsDropTarget(VARIANT_BOOL* value) override {
    return GetFlag(takes_drops_, value);
  }
  STDMETHODIMP put_RegisterAsDropTarget(VARIANT_BOOL value) override {
    return PutFlag(value, takes_drops_);
  }

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) override;
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD) override;
  STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND, LPCRECT) override;
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID* id) override;
  STDMETHODIMP GetUserType(DWORD, LPOLESTR* type) override;
  STDMETHODIMP SetExtent(DWORD, SIZEL* extent) override;
  STDMETHODIMP GetExtent(DWORD, SIZEL* extent) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** sinks) override;
  STDMETHODIMP GetMiscStatus(DWORD, DWORD* status) override;

  // IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

  // IOleControl
  STDMETHODIMP GetControlInfo(CONTROLINFO*) override { return E_NOTIMPL; }
  STDMETHODIMP OnMnemonic(MSG*) override { return E_NOTIMPL; }
  STDMETHODIMP OnAmbientPropertyChange(DISPID) override;
  STDMETHODIMP FreezeEvents(BOOL) override { return S_OK; }

  // IPersistStreamInit
  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP IsDirty() override { return S_FALSE; }
  STDMETHODIMP Load(IStream*) override { return S_OK; }
  STDMETHODIMP Save(IStream*, BOOL) override { return S_OK; }
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
  STDMETHODIMP InitNew() override { return S_OK; }

  // IViewObject2
  STDMETHODIMP Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds, LPCRECTL,
                    BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) override;
  STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP SetAdvise(DWORD, DWORD, IAdviseSink*) override { return S_OK; }
  STDMETHODIMP GetAdvise(DWORD*, DWORD*, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL extent) override {
    return GetExtent(aspect, extent);
  }

  // IConnectionPointContainer
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 private:
  ~Control() override;

  void HandleNotice(const Json& notice);
  void HandleNavigation(const Json& notice);
  void HandlePageEvent(const Json& notice);
  void ShowMenu(const Json& menu);
  HRESULT Copy();
  void Follow(const std::wstring& url, const std::wstring& target);
  void ShowPicture(const Json& notice);
  void TellWhereabouts();
  void TellSize();
  void TellColors();
  HRESULT NavigateTo(const std::wstring& url);
  HRESULT SetZoom(int percent);

  HRESULT ShowInPlace();
  void LeavePlace();
  HRESULT TypeInfo(ITypeInfo** info);

  // ControlWindowEvents
  void OnInput(Json message) override;
  void OnResized(int width, int height) override;
  void OnPainted(int number) override;
  void OnFocus(bool has_focus) override;
  void OnPressed() override;
  void OnColorsChanged() override;
  void OnZoomWheel(int steps) override;

  static HRESULT GetFlag(bool flag, VARIANT_BOOL* value);
  static HRESULT PutFlag(VARIANT_BOOL value, bool& flag);

  UiQueue queue_;  // Outlives the link, whose reading thread fills it.
  HelperLink link_;
  std::shared_ptr<DomSession> session_;
  BrowserEvents events_;
  HostSite site_;
  InPlaceSession in_place_;
  Picture picture_;
  std::unique_ptr<ControlWindow> window_;
  Microsoft::WRL::ComPtr<IOleAdviseHolder> advise_;
  SIZE size_ = {};
  int zoom_ = kUnzoomed;
  SIZEL extent_ = {};
  std::wstring location_;
  READYSTATE ready_state_ = READYSTATE_UNINITIALIZED;
  bool is_in_use_ = true;
  bool is_offline_ = false;
  bool is_silent_ = false;
  bool is_browser_ = false;
  bool takes_drops_ = false;
};

}  // namespace kitbay::web_browser
