#pragma once

#include <oleidl.h>
#include <wrl/client.h>

namespace kitbay::web_browser {

/** The exchange with the host's in-place site: activation and its end. */
class InPlaceSession {
 public:
  /** Asks the site of `client_site` to activate in place. Fails with the site's result. */
  HRESULT Activate(IOleClientSite* client_site);
  /** The window and the place given by the host; valid after Activate. */
  HWND parent() const { return parent_; }
  const RECT& place() const { return place_; }

  bool IsActive() const { return site_ != nullptr; }
  void UiActivate(IOleInPlaceActiveObject* active);
  void UiDeactivate();
  void Deactivate();

 private:
  Microsoft::WRL::ComPtr<IOleInPlaceSite> site_;
  Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame_;
  Microsoft::WRL::ComPtr<IOleInPlaceUIWindow> document_;
  HWND parent_ = nullptr;
  RECT place_ = {};
  bool is_ui_active_ = false;
};

}  // namespace kitbay::web_browser
