#pragma once

#include "platform/win32/window/com_parts.h"

namespace kitbay::platform::win32 {

/// A drop target that accepts nothing.
class RefusedDropsPart : public IDropTarget {
 public:
  using Interface = IDropTarget;

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) override {
    return Refuse(effect);
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) override {
    return Refuse(effect);
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Drop(IDataObject*, DWORD, POINTL, DWORD* effect) override {
    return Refuse(effect);
  }

 private:
  static HRESULT Refuse(DWORD* effect) {
    if (effect == nullptr) return E_POINTER;
    *effect = DROPEFFECT_NONE;
    return S_OK;
  }
};

class RefusedDrops final : public ObjectOfParts<RefusedDropsPart> {};

}  // namespace kitbay::platform::win32
