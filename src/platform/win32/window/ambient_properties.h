#pragma once

#include "platform/win32/window/browser_site_state.h"
#include "platform/win32/window/com_parts.h"

namespace kitbay::platform::win32 {

/// Tells the control which of a page's contents it may load and run. Texts from update sources go
/// into the page as markup, so only the page's own images are allowed.
class AmbientPropertiesPart : public EventPart<IDispatch> {
 public:
  explicit AmbientPropertiesPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;
};

}  // namespace kitbay::platform::win32
