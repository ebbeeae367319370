#pragma once

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include <memory>

namespace kitbay::platform::win32 {

/// What a browser control needs from the window that it lies in.
class BrowserOwner {
 public:
  virtual ~BrowserOwner() = default;

  /// The page given to the control has loaded.
  virtual void PageComplete() = 0;

  /// The page given to the control cannot be loaded; the control shows its own error page.
  virtual void PageFailed() = 0;

  /// The focus moved past the last element of the page, or past the first one if `backwards`.
  virtual void FocusLeftPage(bool backwards) = 0;
};

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
