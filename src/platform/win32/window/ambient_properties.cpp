#include "platform/win32/window/ambient_properties.h"

#include <olectl.h>
//
#include <mshtmdid.h>

namespace kitbay::platform::win32 {
namespace {

// Offline, the control fetches no image from another machine, but still loads the page's own files.
constexpr LONG kDownloadControl = DLCTL_DLIMAGES | DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA |
                                  DLCTL_NO_RUNACTIVEXCTLS | DLCTL_NO_DLACTIVEXCTLS |
                                  DLCTL_NO_FRAMEDOWNLOAD | DLCTL_NO_BEHAVIORS |
                                  DLCTL_NO_CLIENTPULL | DLCTL_FORCEOFFLINE | DLCTL_SILENT;

}  // namespace

HRESULT AmbientPropertiesPart::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*,
                                      VARIANT* result, EXCEPINFO*, UINT*) {
  if ((flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
  if (result == nullptr) return E_POINTER;
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
