#pragma once

#include <oleidl.h>
#include <wrl/client.h>

#include <optional>
#include <string>

namespace kitbay::web_browser {

/** What the control requests from its host's site; nothing if there is no site. */
class HostSite {
 public:
  void Set(IOleClientSite* site) { site_ = site; }
  IOleClientSite* Get() const { return site_.Get(); }

  /** The host's DISPID_AMBIENT_DLCONTROL; empty if it has none. */
  std::optional<int> DownloadControl() const;

  /** The host's DOCHOSTUIFLAG_ flags; 0 if it names none. */
  DWORD Flags() const;

  /** The host's DISPID_AMBIENT_USERMODE; true if it has none. */
  bool IsInUse() const;

  /** The drop target: the one that the host offers instead of `own`, or else `own`. */
  Microsoft::WRL::ComPtr<IDropTarget> DropTarget(IDropTarget* own) const;

  /** Offers a key that the control does not use. Returns whether the host took it. */
  bool TakesKey(MSG& message) const;

  void FocusChanged(bool has_focus) const;

  /**
   * Offers the host a menu of that CONTEXT_MENU_ kind, and the commands for it (IOleCommandTarget).
   * Returns whether it suppresses the control's own.
   */
  bool ReplacesMenu(int kind, POINT place, IUnknown* commands) const;

  /** Whether the host withholds a key from the page and from the control itself. */
  bool HoldsBack(MSG& message) const;

  /** Whether a page may open a window, according to the host's window manager. */
  bool AllowsWindow(const std::wstring& url, const std::wstring& from_url) const;

 private:
  /** An ambient property as that type; false if the host has none. */
  bool Ambient(DISPID property, VARTYPE type, VARIANT* value) const;

  template <typename Interface>
  Microsoft::WRL::ComPtr<Interface> As(REFIID id) const {
    Microsoft::WRL::ComPtr<Interface> result;
    if (site_) {
      site_->QueryInterface(id, reinterpret_cast<void**>(result.GetAddressOf()));
    }
    return result;
  }

  Microsoft::WRL::ComPtr<IOleClientSite> site_;
};

}  // namespace kitbay::web_browser
