#pragma once

#include <windows.h>

#include <exdisp.h>

#include <string>

#include "platform/win32/browser/browser_site_state.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {

/// The control's own events: allows it to load the one page that it was given, and nothing else.
class BrowserEventsPart : public EventPart<DWebBrowserEvents2> {
 public:
  explicit BrowserEventsPart(BrowserSiteStateRef state) : state_(std::move(state)) {}

  /// The control is about to get the page at `path`. `browser` is the control itself, as opposed to
  /// the browsers of frames.
  void ExpectPage(IUnknown* browser, const std::string& path);

  /// The control is about to be closed; from now on every page is cancelled.
  void ExpectNothing();

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) override;

 private:
  bool IsExpectedPage(const VARIANT& browser, const VARIANT& address) const;
  void OnBeforeNavigate(const DISPPARAMS& parameters);
  void OnDocumentComplete(const DISPPARAMS& parameters);
  void OnNavigateError(const DISPPARAMS& parameters);

  BrowserSiteStateRef state_;
  // Not a reference: the control holds this sink.
  IUnknown* browser_ = nullptr;
  // Set until the page has loaded; a later visit to the same address was not started by the
  // program.
  std::string expected_path_;
};

class BrowserEvents final : public ObjectOfParts<BrowserEventsPart> {
 public:
  explicit BrowserEvents(const BrowserSiteStateRef& state) : ObjectOfParts(state) {}
};

}  // namespace kitbay::platform::win32
