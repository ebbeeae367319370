#include "file_drops.h"

#include <shellapi.h>

namespace kitbay::web_browser {
namespace {

FORMATETC Files() { return {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}; }

}  // namespace

STDMETHODIMP FileDrops::DragEnter(IDataObject* data, DWORD, POINTL, DWORD* effect) {
  FORMATETC files = Files();
  has_files_ = data && data->QueryGetData(&files) == S_OK;
  return DragOver(0, {}, effect);
}

STDMETHODIMP FileDrops::DragOver(DWORD, POINTL, DWORD* effect) {
  if (!effect) {
    return E_POINTER;
  }
  *effect &= has_files_ ? DROPEFFECT_COPY : DROPEFFECT_NONE;
  return S_OK;
}

STDMETHODIMP FileDrops::Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) {
  if (!data || !effect) {
    return E_POINTER;
  }
  FORMATETC files = Files();
  STGMEDIUM medium = {};
  if (data->GetData(&files, &medium) != S_OK) {
    *effect = DROPEFFECT_NONE;
    return S_OK;
  }
  wchar_t path[MAX_PATH] = {};
  DragQueryFileW(static_cast<HDROP>(medium.hGlobal), 0, path, MAX_PATH);
  ReleaseStgMedium(&medium);
  *effect = DROPEFFECT_COPY;
  return Guarded([&] {
    open_(path);
    return S_OK;
  });
}

}  // namespace kitbay::web_browser
