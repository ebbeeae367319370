#pragma once

#include <string>

#include "connection_point.h"

namespace kitbay::web_browser {

/** The control's own events, DWebBrowserEvents2. URLs of local files are told as their paths. */
class BrowserEvents {
 public:
  /** `owner` is the control, both as the events' source and as their first argument. */
  BrowserEvents(IConnectionPointContainer* owner, IDispatch* browser);

  ConnectionPoint& point() { return point_; }

  /** Whether a sink cancels the navigation. */
  bool BeforeNavigate(const std::wstring& url);

  /** Announces what is about to be loaded, a document or a file to keep; whether the host cancels.
   */
  bool FileDownload(bool is_document);

  void NavigateComplete(const std::wstring& url);
  void DocumentComplete(const std::wstring& url);
  /** Whether a sink keeps the error page away. */
  bool NavigateError(const std::wstring& url, int status);
  void NewWindow(const std::wstring& url, const std::wstring& from_url);

 private:
  void FireWithUrl(DISPID event, const std::wstring& url);

  ConnectionPoint point_;
  IDispatch* browser_;
};

}  // namespace kitbay::web_browser
