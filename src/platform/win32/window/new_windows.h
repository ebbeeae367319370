#pragma once

#include <windows.h>

#include <servprov.h>
#include <shlobj.h>

#include "platform/win32/window/browser_site_state.h"
#include "platform/win32/window/com_parts.h"

namespace kitbay::platform::win32 {

/// Where the control gets the services below.
class ServiceProviderPart : public IServiceProvider {
 public:
  using Interface = IServiceProvider;
  explicit ServiceProviderPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return service == __uuidof(INewWindowManager) ? QueryInterface(id, object) : E_NOINTERFACE;
  }
};

/// Refuses every window that a page wants to open.
class NewWindowsPart : public INewWindowManager {
 public:
  using Interface = INewWindowManager;
  explicit NewWindowsPart(const BrowserSiteStateRef&) {}

  HRESULT STDMETHODCALLTYPE EvaluateNewWindow(LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, WINBOOL, DWORD,
                                              DWORD) override {
    return E_FAIL;
  }
};

}  // namespace kitbay::platform::win32
