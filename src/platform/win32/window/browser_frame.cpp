#include "platform/win32/window/browser_frame.h"

namespace kitbay::platform::win32 {

HRESULT InPlaceFramePart::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = state_->window;
  return *window == nullptr ? E_FAIL : S_OK;
}

HRESULT InPlaceFramePart::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
  state_->active_object = object;
  return S_OK;
}

}  // namespace kitbay::platform::win32
