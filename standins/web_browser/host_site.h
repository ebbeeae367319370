#pragma once

#include <oleidl.h>
#include <wrl/client.h>

#include <optional>
#include <string>

namespace kitbay::web_browser {

/** What the control asks of the site that its host gave it; nothing where there is no site. */
class HostSite {
 public:
  void Set(IOleClientSite* site) { site_ = site; }
  IOleClientSite* Get() const { return site_.Get(); }

  /** The host's DISPID_AMBIENT_DLCONTROL; empty where it has none. */
  std::optional<int> DownloadControl() const;

  /** Offers a key that the control does not want; whether the host took it. */
  bool TakesKey(MSG& message) const;

  void FocusChanged(bool has_focus) const;

  /** Offers the host a menu of that CONTEXT_MENU_ kind; whether it keeps the control's own away. */
  bool ReplacesMenu(int kind, POINT place) const;

  /** Whether the host keeps a key from the page and from the control itself. */
  bool HoldsBack(MSG& message) const;

  /** Whether a page may open a window, as far as the host's window manager says. */
  bool AllowsWindow(const std::wstring& url, const std::wstring& from_url) const;

 private:
  template <typename Interface>
  Microsoft::WRL::ComPtr<Interface> As(REFIID id) const {
    Microsoft::WRL::ComPtr<Interface> result;
    if (site_) site_->QueryInterface(id, reinterpret_cast<void**>(result.GetAddressOf()));
    return result;
  }

  Microsoft::WRL::ComPtr<IOleClientSite> site_;
};

}  // namespace kitbay::web_browser
