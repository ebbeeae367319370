#include "platform/win32/browser/browser_events.h"

#include <exdispid.h>

#include "platform/win32/browser/browser_host.h"
#include "platform/win32/browser/page_address.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {
namespace {

/// The argument at `position` in the event's declaration; an empty one if there are fewer.
VARIANT Argument(const DISPPARAMS& parameters, UINT position) {
  VARIANT argument;
  VariantInit(&argument);
  if (position < parameters.cArgs) {
    argument = parameters.rgvarg[parameters.cArgs - 1 - position];
  }
  return argument;
}

void Cancel(const VARIANT& flag) {
  if (flag.vt == (VT_BYREF | VT_BOOL) && flag.pboolVal != nullptr) {
    *flag.pboolVal = VARIANT_TRUE;
  }
}

std::string TextOf(const VARIANT& value) {
  const VARIANT& direct =
      value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal != nullptr ? *value.pvarVal : value;
  if (direct.vt != VT_BSTR || direct.bstrVal == nullptr) {
    return {};
  }
  return ToUtf8({direct.bstrVal, SysStringLen(direct.bstrVal)});
}

}  // namespace

void BrowserEventsPart::ExpectPage(IUnknown* browser, const std::string& path) {
  browser_ = browser;
  expected_path_ = path;
}

void BrowserEventsPart::ExpectNothing() {
  browser_ = nullptr;
  expected_path_.clear();
}

bool BrowserEventsPart::IsExpectedPage(const VARIANT& browser, const VARIANT& address) const {
  return !expected_path_.empty() && browser.vt == VT_DISPATCH &&
         IsSameObject(browser.pdispVal, browser_) &&
         IsAddressOfFile(TextOf(address), expected_path_);
}

void BrowserEventsPart::OnBeforeNavigate(const DISPPARAMS& parameters) {
  constexpr UINT kCancelPosition = 6;
  if (!IsExpectedPage(Argument(parameters, 0), Argument(parameters, 1))) {
    Cancel(Argument(parameters, kCancelPosition));
  }
}

void BrowserEventsPart::OnDocumentComplete(const DISPPARAMS& parameters) {
  if (!IsExpectedPage(Argument(parameters, 0), Argument(parameters, 1))) {
    return;
  }
  expected_path_.clear();
  if (state_->owner != nullptr) {
    state_->owner->PageComplete();
  }
}

// Whatever address the control then gives to its error page, it is not the expected one.
void BrowserEventsPart::OnNavigateError(const DISPPARAMS& parameters) {
  if (!IsExpectedPage(Argument(parameters, 0), Argument(parameters, 1))) {
    return;
  }
  expected_path_.clear();
  if (state_->owner != nullptr) {
    state_->owner->PageFailed();
  }
}

STDMETHODIMP BrowserEventsPart::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                       VARIANT*, EXCEPINFO*, UINT*) {
  if (parameters == nullptr) {
    return E_POINTER;
  }
  try {
    switch (event) {
      case DISPID_BEFORENAVIGATE2:
        OnBeforeNavigate(*parameters);
        return S_OK;
      case DISPID_NEWWINDOW2:
      case DISPID_NEWWINDOW3:
        Cancel(Argument(*parameters, 1));
        return S_OK;
      case DISPID_FILEDOWNLOAD: {
        // The page itself is announced as an active document.
        const VARIANT is_document = Argument(*parameters, 0);
        if (is_document.vt != VT_BOOL || is_document.boolVal == VARIANT_FALSE) {
          Cancel(Argument(*parameters, 1));
        }
        return S_OK;
      }
      case DISPID_NAVIGATEERROR:
        OnNavigateError(*parameters);
        return S_OK;
      case DISPID_DOCUMENTCOMPLETE:
        OnDocumentComplete(*parameters);
        return S_OK;
      default:
        return DISP_E_MEMBERNOTFOUND;
    }
  } catch (...) {
    return ReportCurrentException();
  }
}

}  // namespace kitbay::platform::win32
