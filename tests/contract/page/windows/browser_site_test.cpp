// What the control's container tells and gives it.

#include "platform/win32/browser/browser_site.h"
#include "platform/win32/browser/browser_host.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <mshtmdid.h>

#include "platform/win32/com/automation.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

class RecordingOwner : public BrowserOwner {
 public:
  void PageComplete() override {}
  void PageFailed() override {}
  void FocusLeftPage(bool backwards) override { (backwards ? left_backwards : left_forwards)++; }
  int left_forwards = 0;
  int left_backwards = 0;
};

class SiteOfControl : public ::testing::Test {
 protected:
  template <class Interface>
  ComPtr<Interface> As() {
    ComPtr<Interface> part;
    site_->QueryInterface(IID_PPV_ARGS(&part));
    return part;
  }

  static MSG KeyDown(WPARAM key) {
    MSG message{};
    message.message = WM_KEYDOWN;
    message.wParam = key;
    return message;
  }

  RecordingOwner owner_;
  BrowserSiteStateRef state_ = std::make_shared<BrowserSiteState>();
  ComPtr<BrowserSite> site_ = MakeComObject<BrowserSite>(state_);
};

TEST_F(SiteOfControl, IsOneObjectBehindAllItsInterfaces) {
  const ComPtr<IUnknown> client_site = As<IOleClientSite>();
  for (const ComPtr<IUnknown>& part :
       {ComPtr<IUnknown>(As<IOleInPlaceSite>()), ComPtr<IUnknown>(As<IOleWindow>()),
        ComPtr<IUnknown>(As<IOleControlSite>()), ComPtr<IUnknown>(As<IDispatch>()),
        ComPtr<IUnknown>(As<IDocHostUIHandler>()), ComPtr<IUnknown>(As<IServiceProvider>())}) {
    EXPECT_TRUE(IsSameObject(client_site.Get(), part.Get()));
  }
  EXPECT_EQ(As<IPersist>().Get(), nullptr);
}

TEST_F(SiteOfControl, AllowsImagesAndNothingThatRunsOrComesFromElsewhere) {
  const std::int32_t flags =
      Invoke(*As<IDispatch>().Get(), DISPID_AMBIENT_DLCONTROL, DISPATCH_PROPERTYGET).ToInteger();
  EXPECT_TRUE(flags & DLCTL_DLIMAGES);
  for (const std::int32_t off : {DLCTL_NO_SCRIPTS, DLCTL_NO_JAVA, DLCTL_NO_RUNACTIVEXCTLS,
                                 DLCTL_NO_DLACTIVEXCTLS, DLCTL_NO_FRAMEDOWNLOAD, DLCTL_NO_BEHAVIORS,
                                 DLCTL_NO_CLIENTPULL, DLCTL_FORCEOFFLINE, DLCTL_SILENT}) {
    EXPECT_TRUE(flags & off) << off;
  }
  EXPECT_FALSE(flags & (DLCTL_VIDEOS | DLCTL_BGSOUNDS));
  // The page declares its own encoding.
  EXPECT_FALSE(flags & DLCTL_NO_METACHARSET);
}

TEST_F(SiteOfControl, RefusesNewWindows) {
  ComPtr<INewWindowManager> windows;
  const ComPtr<IServiceProvider> provider = As<IServiceProvider>();
  ASSERT_EQ(provider->QueryService(__uuidof(INewWindowManager), IID_PPV_ARGS(&windows)), S_OK);
  EXPECT_EQ(
      windows->EvaluateNewWindow(L"http://update.example/", nullptr, nullptr, nullptr, FALSE, 0, 0),
      E_FAIL);
  ComPtr<IUnknown> other;
  EXPECT_EQ(provider->QueryService(__uuidof(IOleClientSite), IID_PPV_ARGS(&other)), E_NOINTERFACE);
}

TEST_F(SiteOfControl, IsThemedScalesAndKeepsToTheRulesOfAWebPage) {
  DOCHOSTUIINFO info{};
  ASSERT_EQ(As<IDocHostUIHandler>()->GetHostInfo(&info), S_OK);
  for (const DWORD flag :
       {DOCHOSTUIFLAG_NO3DBORDER, DOCHOSTUIFLAG_NO3DOUTERBORDER, DOCHOSTUIFLAG_THEME,
        DOCHOSTUIFLAG_DISABLE_HELP_MENU, DOCHOSTUIFLAG_DISABLE_SCRIPT_INACTIVE,
        DOCHOSTUIFLAG_LOCAL_MACHINE_ACCESS_CHECK, DOCHOSTUIFLAG_DISABLE_UNTRUSTEDPROTOCOL,
        DOCHOSTUIFLAG_DPI_AWARE}) {
    EXPECT_TRUE(info.dwFlags & flag) << std::hex << flag;
  }
  EXPECT_EQ(info.dwDoubleClick, static_cast<DWORD>(DOCHOSTUIDBLCLK_DEFAULT));
}

TEST_F(SiteOfControl, HoldsBackNoKeyThatIsLetGo) {
  MSG message = KeyDown(VK_F5);
  message.message = WM_KEYUP;
  EXPECT_EQ(As<IDocHostUIHandler>()->TranslateAccelerator(&message, nullptr, 0), S_FALSE);
}

TEST_F(SiteOfControl, HandsTheFocusOnAtTheEndOfThePage) {
  constexpr DWORD kShift = 1;
  constexpr DWORD kControl = 2;
  constexpr DWORD kAlt = 4;
  state_->owner = &owner_;
  const ComPtr<IOleControlSite> site = As<IOleControlSite>();
  MSG tab = KeyDown(VK_TAB);
  EXPECT_EQ(site->TranslateAccelerator(&tab, 0), S_OK);
  EXPECT_EQ(site->TranslateAccelerator(&tab, kShift), S_OK);
  EXPECT_EQ(site->TranslateAccelerator(&tab, kControl), S_FALSE);
  EXPECT_EQ(site->TranslateAccelerator(&tab, kAlt), S_FALSE);
  MSG letter = KeyDown('A');
  EXPECT_EQ(site->TranslateAccelerator(&letter, 0), S_FALSE);
  EXPECT_EQ(owner_.left_forwards, 1);
  EXPECT_EQ(owner_.left_backwards, 1);
}

TEST_F(SiteOfControl, WithoutAWindowGivesNone) {
  HWND window = nullptr;
  EXPECT_EQ(As<IOleInPlaceSite>()->GetWindow(&window), E_FAIL);
  MSG tab = KeyDown(VK_TAB);
  EXPECT_EQ(As<IOleControlSite>()->TranslateAccelerator(&tab, 0), S_FALSE);
}

}  // namespace
}  // namespace kitbay::platform::win32
