#include "platform/win32/browser/browser_site.h"

#include <olectl.h>

#include <mshtmdid.h>

#include "platform/win32/browser/browser_host.h"

namespace kitbay::platform::win32 {
namespace {

// The documented bits of TranslateAccelerator's modifiers.
constexpr DWORD kShiftDown = 1;
constexpr DWORD kControlDown = 2;
constexpr DWORD kAltDown = 4;

// Offline, the control fetches no image from another machine, but still loads the page's own files.
constexpr LONG kDownloadControl = DLCTL_DLIMAGES | DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA |
                                  DLCTL_NO_RUNACTIVEXCTLS | DLCTL_NO_DLACTIVEXCTLS |
                                  DLCTL_NO_FRAMEDOWNLOAD | DLCTL_NO_BEHAVIORS |
                                  DLCTL_NO_CLIENTPULL | DLCTL_FORCEOFFLINE | DLCTL_SILENT;

}  // namespace

STDMETHODIMP InPlaceFramePart::GetWindow(HWND* window) {
  if (window == nullptr) {
    return E_POINTER;
  }
  *window = state_->window;
  return *window == nullptr ? E_FAIL : S_OK;
}

STDMETHODIMP InPlaceFramePart::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
  state_->active_object = object;
  return S_OK;
}

STDMETHODIMP ClientSitePart::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (moniker != nullptr) {
    *moniker = nullptr;
  }
  return E_NOTIMPL;
}

STDMETHODIMP ClientSitePart::GetContainer(IOleContainer** container) {
  if (container == nullptr) {
    return E_POINTER;
  }
  *container = nullptr;
  return E_NOINTERFACE;
}

STDMETHODIMP InPlaceSitePart::GetWindow(HWND* window) {
  if (window == nullptr) {
    return E_POINTER;
  }
  *window = state_->window;
  return *window == nullptr ? E_FAIL : S_OK;
}

STDMETHODIMP InPlaceSitePart::GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  if (frame == nullptr || document == nullptr || place == nullptr || clip == nullptr ||
      info == nullptr) {
    return E_POINTER;
  }
  *document = nullptr;
  try {
    *frame = MakeComObject<BrowserFrame>(state_).Detach();
  } catch (...) {
    *frame = nullptr;
    return E_OUTOFMEMORY;
  }
  *place = state_->place;
  *clip = state_->place;
  info->fMDIApp = FALSE;
  info->hwndFrame = state_->window;
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}

STDMETHODIMP InPlaceSitePart::OnPosRectChange(LPCRECT) {
  if (state_->in_place_object == nullptr) {
    return E_UNEXPECTED;
  }
  return state_->in_place_object->SetObjectRects(&state_->place, &state_->place);
}

STDMETHODIMP ControlSitePart::GetExtendedControl(IDispatch** control) {
  if (control != nullptr) {
    *control = nullptr;
  }
  return E_NOTIMPL;
}

STDMETHODIMP ControlSitePart::TranslateAccelerator(MSG* message, DWORD modifiers) {
  if (message == nullptr || message->message != WM_KEYDOWN || message->wParam != VK_TAB) {
    return S_FALSE;
  }
  if (state_->owner == nullptr || (modifiers & (kControlDown | kAltDown)) != 0) {
    return S_FALSE;
  }
  try {
    state_->owner->FocusLeftPage((modifiers & kShiftDown) != 0);
  } catch (...) {
    return E_FAIL;
  }
  return S_OK;
}

STDMETHODIMP AmbientPropertiesPart::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*,
                                           VARIANT* result, EXCEPINFO*, UINT*) {
  if ((flags & DISPATCH_PROPERTYGET) == 0) {
    return DISP_E_MEMBERNOTFOUND;
  }
  if (result == nullptr) {
    return E_POINTER;
  }
  switch (member) {
    case DISPID_AMBIENT_DLCONTROL:
      result->vt = VT_I4;
      result->lVal = kDownloadControl;
      return S_OK;
    case DISPID_AMBIENT_USERMODE:
      result->vt = VT_BOOL;
      result->boolVal = VARIANT_TRUE;
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace kitbay::platform::win32
