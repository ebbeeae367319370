#pragma once

#include <wrl/client.h>

#include <string>

#include "connection_point.h"

namespace kitbay::web_browser {

/**
 * The control's own events, DWebBrowserEvents2. URLs of local files are reported as their paths.
 */
class BrowserEvents {
 public:
  /**
   * `owner` is the control, both as the events' source and as their first argument; for a frame,
   * that is a browser of its own.
   */
  BrowserEvents(IConnectionPointContainer* owner, IDispatch* browser);

  ConnectionPoint& point() { return point_; }

  /** Returns whether a sink cancels the navigation. */
  bool BeforeNavigate(const std::wstring& url, bool is_frame);

  /**
   * Announces a document or a file to keep that is about to be loaded. Returns whether the host
   * cancels it.
   */
  bool FileDownload(bool is_document);

  void NavigateComplete(const std::wstring& url, bool is_frame);
  void DocumentComplete(const std::wstring& url, bool is_frame);
  /** Returns whether a sink suppresses the error page. */
  bool NavigateError(const std::wstring& url, int status);
  void NewWindow(const std::wstring& url, const std::wstring& from_url);

 private:
  IDispatch* BrowserOf(bool is_frame);
  void FireWithUrl(DISPID event, const std::wstring& url, bool is_frame);

  ConnectionPoint point_;
  IDispatch* browser_;
  Microsoft::WRL::ComPtr<IDispatch> frame_;
};

}  // namespace kitbay::web_browser
