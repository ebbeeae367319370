#pragma once

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include <memory>

namespace kitbay::platform::win32 {

class BrowserOwner;

/// What the parts of the control's container share. The control may hold them longer than the
/// window lives; from then on `window` is null and `owner` empty.
struct BrowserSiteState {
  HWND window = nullptr;
  BrowserOwner* owner = nullptr;
  RECT place{};
  Microsoft::WRL::ComPtr<IOleInPlaceObject> in_place_object;
  Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> active_object;
};

using BrowserSiteStateRef = std::shared_ptr<BrowserSiteState>;

}  // namespace kitbay::platform::win32
