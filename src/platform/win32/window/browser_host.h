#pragma once

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include <string>

#include "platform/main_window.h"
#include "platform/win32/window/browser_events.h"
#include "platform/win32/window/browser_site.h"
#include "platform/win32/window/connection.h"

namespace kitbay::platform::win32 {

/// The system's WebBrowser control in a window, with everything that a page could run or load
/// switched off. Failures are `base::Failure` with the HRESULT.
class BrowserHost {
 public:
  /// Creates the control and activates it in `window`.
  BrowserHost(HWND window, const Rectangle& place, BrowserOwner& owner);

  /// Closes the control.
  ~BrowserHost();
  BrowserHost(const BrowserHost&) = delete;
  BrowserHost& operator=(const BrowserHost&) = delete;

  void Move(const Rectangle& place);
  void Navigate(const std::string& path);

  /// Shows the page at that zoom, in percent. An engine without zoom shows it unchanged.
  void Zoom(int percent);

  /// The document of the page. Fails with 91 if there is none.
  Microsoft::WRL::ComPtr<IDispatch> Document() const;

  bool HasFocus() const;

  /// Whether the window is the control's, or lies within it.
  bool Contains(HWND window) const;

  /// Gives the focus to the page; with the message of a Tab key, to the page's first or last
  /// element.
  void TakeFocus(MSG* tab);

  /// Offers a key to the page; true if the page has used it.
  bool TranslateKey(MSG& message);

  void OnWindowActivate(bool active);

 private:
  HWND Window() const;

  BrowserSiteStateRef state_;
  Microsoft::WRL::ComPtr<BrowserSite> site_;
  Microsoft::WRL::ComPtr<BrowserEvents> events_;
  Microsoft::WRL::ComPtr<IOleObject> control_;
  Microsoft::WRL::ComPtr<IDispatch> browser_;
  Connection connection_;
};

}  // namespace kitbay::platform::win32
