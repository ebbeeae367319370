#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <exdisp.h>
#include <wrl/client.h>

#include <string>

#include "contract/failure_number.h"
#include "contract/system/win32/scratch_folder.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

using contract::FailureNumber;
using contract::ScratchFolder;
using Microsoft::WRL::ComPtr;

/// Makes the help viewer use the system's own browser control, whatever control is registered in
/// its place, and initialises COM for the thread.
class SystemBrowserControl {
 public:
  SystemBrowserControl() {
    joined_ = SUCCEEDED(CoInitialize(nullptr));
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    library_.reset(LoadLibraryW(L"ieframe.dll"));
    const auto get_class_object = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(library_.get(), "DllGetClassObject")));
    ComPtr<IUnknown> factory;
    registered_ =
        get_class_object != nullptr &&
        SUCCEEDED(get_class_object(CLSID_WebBrowser, IID_PPV_ARGS(factory.GetAddressOf()))) &&
        SUCCEEDED(CoRegisterClassObject(CLSID_WebBrowser, factory.Get(), CLSCTX_INPROC_SERVER,
                                        REGCLS_MULTIPLEUSE, &cookie_));
  }
  ~SystemBrowserControl() {
    if (registered_) {
      CoRevokeClassObject(cookie_);
    }
    if (joined_) {
      CoUninitialize();
    }
  }
  SystemBrowserControl(const SystemBrowserControl&) = delete;
  SystemBrowserControl& operator=(const SystemBrowserControl&) = delete;

  bool is_offered() const { return joined_ && registered_; }

 private:
  UniqueModule library_;
  bool joined_ = false;
  bool registered_ = false;
  DWORD cookie_ = 0;
};

BOOL CALLBACK CountHelpWindow(HWND window, LPARAM count) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  wchar_t name[16] = L"";
  GetClassNameW(window, name, 16);
  if (process == GetCurrentProcessId() && std::wstring(name) == L"HH Parent") {
    ++*reinterpret_cast<int*>(count);
  }
  return TRUE;
}

/// The number of this program's help windows.
int HelpWindows() {
  int count = 0;
  EnumWindows(&CountHelpWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

TEST(Win32Help, ATopicIsShownUntilAllHelpIsClosed) {
  const SystemBrowserControl browser;
  ASSERT_TRUE(browser.is_offered());
  const ScratchFolder folder;
  const auto files = MakeFiles();
  const std::string help_file = folder.path() + "\\Größe help.chm";
  files->Create(help_file, files->Read(FindProgramPlace().folder + "\\kitbay_contract_help.chm"));
  const auto desktop = MakeDesktop();
  desktop->DisplayHelpTopic(help_file + "::/help_page.html");
  EXPECT_EQ(HelpWindows(), 1);
  desktop->CloseAllHelp();
  EXPECT_EQ(HelpWindows(), 0);
}

TEST(Win32Help, AMissingHelpFileIsReported) {
  const ScratchFolder folder;
  const auto desktop = MakeDesktop();
  const std::string topic = folder.path() + "\\help\\tesselhelp.chm::/AddRemovefeatures.html";
  EXPECT_EQ(FailureNumber([&] { desktop->DisplayHelpTopic(topic); }), 53);
  desktop->CloseAllHelp();
}

TEST(Win32Help, AFileThatIsNoHelpFileIsReported) {
  const ScratchFolder folder;
  MakeFiles()->Create(folder.path() + "\\tesselhelp.chm", "no help");
  const auto desktop = MakeDesktop();
  const std::string topic = folder.path() + "\\tesselhelp.chm::/AddRemovefeatures.html";
  EXPECT_EQ(FailureNumber([&] { desktop->DisplayHelpTopic(topic); }), 75);
  desktop->CloseAllHelp();
  EXPECT_EQ(HelpWindows(), 0);
}

}  // namespace
}  // namespace kitbay::platform::win32
