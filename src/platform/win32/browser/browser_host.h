#pragma once

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include <memory>
#include <string>

#include "platform/html_document.h"
#include "platform/main_window.h"
#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/browser/connection.h"

namespace kitbay::platform::win32 {

class BrowserEvents;
class BrowserSite;
class DocumentEvents;

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

/// The system's WebBrowser control in a window, with everything that a page could run or load
/// switched off. All that its window knows of it. Failures are `base::Failure` with the HRESULT.
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

  /// The document of the page, whose events go to `events` until `DisconnectDocument`, the next
  /// `Navigate` or this object's end. Fails with 91 if there is none.
  std::shared_ptr<HtmlDocument> ConnectDocument(HtmlDocumentEvents& events);
  void DisconnectDocument();

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
  void Close();

  BrowserSiteStateRef state_;
  Microsoft::WRL::ComPtr<BrowserSite> site_;
  Microsoft::WRL::ComPtr<BrowserEvents> events_;
  Microsoft::WRL::ComPtr<IOleObject> control_;
  Microsoft::WRL::ComPtr<IDispatch> browser_;
  Connection connection_;
  std::unique_ptr<DocumentEvents> document_events_;
};

}  // namespace kitbay::platform::win32
