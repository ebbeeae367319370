#pragma once

#include "com_object.h"

namespace kitbay::web_browser {

/** The members of IWebBrowser2 that no host of the stand-in has needed. */
class WebBrowserSlots : public IWebBrowser2 {
 public:
  STDMETHODIMP GoBack() override { return E_NOTIMPL; }
  STDMETHODIMP GoForward() override { return E_NOTIMPL; }
  STDMETHODIMP GoHome() override { return E_NOTIMPL; }
  STDMETHODIMP GoSearch() override { return E_NOTIMPL; }
  STDMETHODIMP Refresh() override { return E_NOTIMPL; }
  STDMETHODIMP Refresh2(VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP get_Parent(IDispatch**) override { return E_NOTIMPL; }
  STDMETHODIMP get_Container(IDispatch**) override { return E_NOTIMPL; }
  STDMETHODIMP get_LocationName(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP Quit() override { return E_NOTIMPL; }
  STDMETHODIMP ClientToWindow(int*, int*) override { return E_NOTIMPL; }
  STDMETHODIMP PutProperty(BSTR, VARIANT) override { return E_NOTIMPL; }
  STDMETHODIMP GetProperty(BSTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP get_FullName(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_Path(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_StatusBar(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_StatusBar(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_StatusText(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP put_StatusText(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_ToolBar(int*) override { return E_NOTIMPL; }
  STDMETHODIMP put_ToolBar(int) override { return E_NOTIMPL; }
  STDMETHODIMP get_MenuBar(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_MenuBar(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_FullScreen(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_FullScreen(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP ShowBrowserBar(VARIANT*, VARIANT*, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP get_TheaterMode(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_TheaterMode(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_AddressBar(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_AddressBar(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_Resizable(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Resizable(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_Left(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Left(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Top(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Top(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Width(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Width(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Height(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Height(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP QueryStatusWB(OLECMDID, OLECMDF*) override { return E_NOTIMPL; }
  STDMETHODIMP ExecWB(OLECMDID, OLECMDEXECOPT, VARIANT*, VARIANT*) override { return E_NOTIMPL; }
};

/** The members of IOleObject for linking, storage and menu verbs. */
class OleObjectSlots : public IOleObject {
 public:
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }
};

template <>
inline bool Answers<WebBrowserSlots>(REFIID id) {
  return Answers<IWebBrowser2>(id);
}
template <>
inline bool Answers<OleObjectSlots>(REFIID id) {
  return id == IID_IOleObject;
}

}  // namespace kitbay::web_browser
