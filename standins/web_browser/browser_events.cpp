#include "browser_events.h"

#include <exdisp.h>
#include <exdispid.h>
#include <shlwapi.h>

#include "frame_browser.h"

namespace kitbay::web_browser {
namespace {

/** A VARIANT that owns its text. */
class Text {
 public:
  explicit Text(const std::wstring& text) {
    VariantInit(&value_);
    value_.vt = VT_BSTR;
    value_.bstrVal = SysAllocString(text.c_str());
  }
  ~Text() { VariantClear(&value_); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;

  VARIANT Value() const { return value_; }
  VARIANT Reference() {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &value_;
    return reference;
  }

 private:
  VARIANT value_;
};

VARIANT Object(IDispatch* object) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = object;
  return value;
}

VARIANT Reference(VARIANT& value) {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = &value;
  return reference;
}

VARIANT Reference(VARIANT_BOOL& flag) {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = VT_BYREF | VT_BOOL;
  reference.pboolVal = &flag;
  return reference;
}

VARIANT Long(long number) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_I4;
  value.lVal = number;
  return value;
}

/** "C:\folder\page.html" for "file:///C:/folder/page.html"; any other URL unchanged. */
std::wstring Told(const std::wstring& url) {
  wchar_t path[MAX_PATH];
  DWORD length = MAX_PATH;
  if (PathCreateFromUrlW(url.c_str(), path, &length, 0) != S_OK) {
    return url;
  }
  return path;
}

}  // namespace

BrowserEvents::BrowserEvents(IConnectionPointContainer* owner, IDispatch* browser)
    : point_(owner, DIID_DWebBrowserEvents2), browser_(browser) {
  frame_.Attach(new FrameBrowser());
}

IDispatch* BrowserEvents::BrowserOf(bool is_frame) { return is_frame ? frame_.Get() : browser_; }

bool BrowserEvents::BeforeNavigate(const std::wstring& url, bool is_frame) {
  Text target(Told(url));
  Text frame(L"");
  Text headers(L"");
  VARIANT flags = Long(0);
  VARIANT post_data;
  VariantInit(&post_data);
  VARIANT_BOOL is_cancelled = VARIANT_FALSE;
  point_.Fire(DISPID_BEFORENAVIGATE2,
              {Object(BrowserOf(is_frame)), target.Reference(), Reference(flags), frame.Reference(),
               Reference(post_data), headers.Reference(), Reference(is_cancelled)});
  return is_cancelled != VARIANT_FALSE;
}

bool BrowserEvents::FileDownload(bool is_document) {
  VARIANT document;
  VariantInit(&document);
  document.vt = VT_BOOL;
  document.boolVal = is_document ? VARIANT_TRUE : VARIANT_FALSE;
  VARIANT_BOOL is_cancelled = VARIANT_FALSE;
  point_.Fire(DISPID_FILEDOWNLOAD, {document, Reference(is_cancelled)});
  return is_cancelled != VARIANT_FALSE;
}

void BrowserEvents::NavigateComplete(const std::wstring& url, bool is_frame) {
  FireWithUrl(DISPID_NAVIGATECOMPLETE2, url, is_frame);
}

void BrowserEvents::DocumentComplete(const std::wstring& url, bool is_frame) {
  FireWithUrl(DISPID_DOCUMENTCOMPLETE, url, is_frame);
}

bool BrowserEvents::NavigateError(const std::wstring& url, int status) {
  Text target(Told(url));
  Text frame(L"");
  VARIANT code = Long(status);
  VARIANT_BOOL is_cancelled = VARIANT_FALSE;
  point_.Fire(DISPID_NAVIGATEERROR, {Object(browser_), target.Reference(), frame.Reference(),
                                     Reference(code), Reference(is_cancelled)});
  return is_cancelled != VARIANT_FALSE;
}

void BrowserEvents::NewWindow(const std::wstring& url, const std::wstring& from_url) {
  IDispatch* offered = nullptr;
  VARIANT browser;
  VariantInit(&browser);
  browser.vt = VT_BYREF | VT_DISPATCH;
  browser.ppdispVal = &offered;
  VARIANT_BOOL is_cancelled = VARIANT_FALSE;
  const Text target(url);
  const Text source(from_url);
  point_.Fire(DISPID_NEWWINDOW3,
              {browser, Reference(is_cancelled), Long(0), source.Value(), target.Value()});
  if (is_cancelled == VARIANT_FALSE) {
    point_.Fire(DISPID_NEWWINDOW2, {browser, Reference(is_cancelled)});
  }
  // No other window can be opened: an offered browser is not used.
  if (offered) {
    offered->Release();
  }
}

void BrowserEvents::FireWithUrl(DISPID event, const std::wstring& url, bool is_frame) {
  Text target(Told(url));
  point_.Fire(event, {Object(BrowserOf(is_frame)), target.Reference()});
}

}  // namespace kitbay::web_browser
