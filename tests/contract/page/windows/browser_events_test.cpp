// What the control may load: the one page that it is given, once.

#include "platform/win32/browser/browser_events.h"
#include "platform/win32/browser/browser_host.h"

#include <exdispid.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/win32/com/automation.h"
#include "platform/win32/com/variant.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

constexpr const char* kPage = "C:\\Kitbay\\AddonUpdates.html";
constexpr const char* kPageUrl = "file:///C:/Kitbay/AddonUpdates.html";

class SilentPart : public EventPart<IDispatch> {
 public:
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
};

/// The browser of the control or of a frame.
class SilentBrowser final : public ObjectOfParts<SilentPart> {};

class CountingOwner : public BrowserOwner {
 public:
  void PageComplete() override { ++pages; }
  void PageFailed() override { ++failures; }
  void FocusLeftPage(bool) override {}
  int pages = 0;
  int failures = 0;
};

VARIANT Reference(VARIANT_BOOL& flag) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BYREF | VT_BOOL;
  value.pboolVal = &flag;
  return value;
}

class NavigationRules : public ::testing::Test {
 protected:
  void SetUp() override {
    state_->owner = &owner_;
    events_->ExpectPage(browser_.Get(), kPage);
  }

  /// Raises the event with the arguments in their documented order.
  void Raise(DISPID event, std::vector<VARIANT> arguments) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXPECT_EQ(events_->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                              nullptr),
              S_OK);
  }

  bool IsCancelled(IDispatch* browser, const std::string& address) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    const Variant source(browser);
    Variant url(address);
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = const_cast<VARIANT*>(&url.get());
    const Variant none;
    Raise(DISPID_BEFORENAVIGATE2, {source.get(), reference, none.get(), none.get(), none.get(),
                                   none.get(), Reference(cancel)});
    return cancel != VARIANT_FALSE;
  }

  void Complete(IDispatch* browser, const std::string& address) {
    const Variant source(browser);
    const Variant url(address);
    Raise(DISPID_DOCUMENTCOMPLETE, {source.get(), url.get()});
  }

  CountingOwner owner_;
  BrowserSiteStateRef state_ = std::make_shared<BrowserSiteState>();
  ComPtr<BrowserEvents> events_ = MakeComObject<BrowserEvents>(state_);
  ComPtr<SilentBrowser> browser_ = MakeComObject<SilentBrowser>();
  ComPtr<SilentBrowser> frame_ = MakeComObject<SilentBrowser>();
};

TEST_F(NavigationRules, ThePageThatWasGivenMayLoad) {
  EXPECT_FALSE(IsCancelled(browser_.Get(), kPageUrl));
  EXPECT_FALSE(IsCancelled(browser_.Get(), kPage));
}

TEST_F(NavigationRules, EveryOtherAddressIsCancelled) {
  for (const char* address :
       {"http://update.example/AddonUpdates.html", "about:blank", "javascript:alert(1)", "",
        "file:///C:/Kitbay/other.html", "res://shdoclc.dll/navcancl.htm", "mailto:a@b.example"}) {
    EXPECT_TRUE(IsCancelled(browser_.Get(), address)) << address;
  }
}

TEST_F(NavigationRules, AFrameMayNotEvenLoadThePage) {
  EXPECT_TRUE(IsCancelled(frame_.Get(), kPageUrl));
  EXPECT_TRUE(IsCancelled(nullptr, kPageUrl));
}

TEST_F(NavigationRules, APageThatHasLoadedDoesNotLoadAgainByItself) {
  Complete(browser_.Get(), kPageUrl);
  EXPECT_TRUE(IsCancelled(browser_.Get(), kPageUrl));
  events_->ExpectPage(browser_.Get(), kPage);
  EXPECT_FALSE(IsCancelled(browser_.Get(), kPageUrl));
}

TEST_F(NavigationRules, OnlyThePageOfTheControlItselfIsComplete) {
  Complete(frame_.Get(), kPageUrl);
  Complete(browser_.Get(), "about:blank");
  EXPECT_EQ(owner_.pages, 0);
  Complete(browser_.Get(), kPageUrl);
  EXPECT_EQ(owner_.pages, 1);
  Complete(browser_.Get(), kPageUrl);
  EXPECT_EQ(owner_.pages, 1);
}

TEST_F(NavigationRules, TheErrorPageOfAFailedNavigationIsNotThePage) {
  const auto fail = [&](IDispatch* browser, const std::string& address) {
    const Variant source(browser);
    const Variant url(address);
    Raise(DISPID_NAVIGATEERROR, {source.get(), url.get()});
  };
  fail(frame_.Get(), kPageUrl);
  fail(browser_.Get(), "file:///C:/Kitbay/other.html");
  EXPECT_EQ(owner_.failures, 0);
  fail(browser_.Get(), kPageUrl);
  EXPECT_EQ(owner_.failures, 1);
  // The control gives its error page one address or the other.
  Complete(browser_.Get(), kPageUrl);
  Complete(browser_.Get(), "res://ieframe.dll/dnserror.htm#file:///C:/Kitbay/AddonUpdates.html");
  EXPECT_EQ(owner_.pages, 0);
}

TEST_F(NavigationRules, NoWindowIsOpened) {
  for (const DISPID event : {DISPID_NEWWINDOW2, DISPID_NEWWINDOW3}) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    const Variant none;
    std::vector<VARIANT> arguments{none.get(), Reference(cancel)};
    if (event == DISPID_NEWWINDOW3) {
      arguments.insert(arguments.end(), 3, none.get());
    }
    Raise(event, arguments);
    EXPECT_NE(cancel, VARIANT_FALSE) << event;
  }
}

TEST_F(NavigationRules, FilesAreNotDownloadedAndDocumentsAre) {
  for (const bool is_document : {false, true}) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    const Variant active_document(is_document);
    Raise(DISPID_FILEDOWNLOAD, {active_document.get(), Reference(cancel)});
    EXPECT_EQ(cancel != VARIANT_FALSE, !is_document);
  }
}

TEST_F(NavigationRules, AnEventWithTooFewArgumentsIsHarmless) {
  Raise(DISPID_BEFORENAVIGATE2, {});
  Raise(DISPID_DOCUMENTCOMPLETE, {});
  Raise(DISPID_NEWWINDOW2, {});
  EXPECT_EQ(owner_.pages, 0);
}

TEST_F(NavigationRules, AControlThatIsGoingLoadsNothing) {
  events_->ExpectNothing();
  EXPECT_TRUE(IsCancelled(browser_.Get(), kPageUrl));
}

TEST_F(NavigationRules, AControlThatOutlivesItsWindowReportsNothing) {
  state_->owner = nullptr;
  Complete(browser_.Get(), kPageUrl);
  EXPECT_EQ(owner_.pages, 0);
}

}  // namespace
}  // namespace kitbay::platform::win32
