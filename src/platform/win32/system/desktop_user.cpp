#include "platform/win32/system/desktop_user.h"

#include <windows.h>
// After windows.h, which they need.
#include <exdisp.h>
#include <oleauto.h>
#include <servprov.h>
#include <shldisp.h>
#include <shlobj.h>
#include <wrl/client.h>

#include "base/failure.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/system_path.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

void Demand(HRESULT result) {
  if (FAILED(result)) {
    throw SystemFailure(static_cast<std::uint32_t>(result), "");
  }
}

VARIANT Integer(LONG value) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

// The automation object of the desktop's window, which lives in the shell's own process.
ComPtr<IShellDispatch2> DesktopShell() {
  ComPtr<IShellWindows> windows;
  Demand(
      CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&windows)));
  VARIANT desktop = Integer(CSIDL_DESKTOP);
  VARIANT nothing{};
  LONG window = 0;
  ComPtr<IDispatch> found;
  Demand(
      windows->FindWindowSW(&desktop, &nothing, SWC_DESKTOP, &window, SWFO_NEEDDISPATCH, &found));
  if (!found) {
    throw base::Failure(base::RuntimeError::kCannotCreateObject);
  }
  ComPtr<IServiceProvider> services;
  ComPtr<IShellBrowser> browser;
  ComPtr<IShellView> view;
  ComPtr<IDispatch> background;
  ComPtr<IShellFolderViewDual> folder;
  ComPtr<IDispatch> application;
  ComPtr<IShellDispatch2> shell;
  Demand(found.As(&services));
  Demand(services->QueryService(SID_STopLevelBrowser, IID_PPV_ARGS(&browser)));
  Demand(browser->QueryActiveShellView(&view));
  Demand(view->GetItemObject(SVGIO_BACKGROUND, IID_PPV_ARGS(&background)));
  Demand(background.As(&folder));
  Demand(folder->get_Application(&application));
  Demand(application.As(&shell));
  return shell;
}

}  // namespace

void StartAsDesktopUser(const std::string& path) {
  const std::wstring program = ToSystemPath(path);
  // The shell would report a missing file in its own message box.
  if (GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES) {
    throw base::Failure(base::RuntimeError::kFileNotFound);
  }
  const ComPtr<IShellDispatch2> shell = DesktopShell();
  // The shell's process can take the foreground for the program only if this one permits it.
  AllowSetForegroundWindow(ASFW_ANY);
  const VARIANT nothing{};
  BSTR file = SysAllocString(program.c_str());
  const HRESULT result =
      shell->ShellExecute(file, nothing, nothing, nothing, Integer(SW_SHOWNORMAL));
  SysFreeString(file);
  Demand(result);
}

}  // namespace kitbay::platform::win32
