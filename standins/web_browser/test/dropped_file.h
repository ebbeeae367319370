#pragma once

#include <windows.h>

#include <ole2.h>
#include <shlobj.h>

#include <stdexcept>
#include <string>

namespace kitbay::web_browser {

/** A file as the shell passes it in a drag. */
class DraggedFile final : public IDataObject {
 public:
  explicit DraggedFile(std::wstring path) : path_(std::move(path)) {}

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    const bool is_known = id == IID_IUnknown || id == IID_IDataObject;
    *result = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }  // Lives on the stack.
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override {
    if (QueryGetData(format) != S_OK) {
      return DV_E_FORMATETC;
    }
    const SIZE_T size = sizeof(DROPFILES) + (path_.size() + 2) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
    auto* files = static_cast<DROPFILES*>(GlobalLock(memory));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    path_.copy(reinterpret_cast<wchar_t*>(files + 1), path_.size());
    GlobalUnlock(memory);
    *medium = {};
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = memory;
    return S_OK;
  }
  STDMETHODIMP QueryGetData(FORMATETC* format) override {
    return format->cfFormat == CF_HDROP && (format->tymed & TYMED_HGLOBAL) ? S_OK : DV_E_FORMATETC;
  }
  STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
  STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
  STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

 private:
  std::wstring path_;
};

/** A drag that ends at the mouse position as soon as its state is queried. */
class DropAtOnce final : public IDropSource {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    const bool is_known = id == IID_IUnknown || id == IID_IDropSource;
    *result = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }  // Lives on the stack.
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP QueryContinueDrag(BOOL, DWORD) override { return DRAGDROP_S_DROP; }
  STDMETHODIMP GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

/** Drags a file onto the middle of a window of this thread and drops it. Returns its effect. */
inline DWORD DropFile(HWND window, const std::wstring& path) {
  RECT place{};
  GetWindowRect(window, &place);
  SetForegroundWindow(GetAncestor(window, GA_ROOT));
  SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  DraggedFile file(path);
  DropAtOnce source;
  DWORD effect = DROPEFFECT_NONE;
  // Releasing a key makes the drag query its state again.
  PostMessageW(window, WM_KEYUP, VK_SHIFT, 0);
  const HRESULT result = DoDragDrop(&file, &source, DROPEFFECT_COPY, &effect);
  if (FAILED(result)) {
    throw std::runtime_error("The file cannot be dragged");
  }
  return effect;
}

}  // namespace kitbay::web_browser
