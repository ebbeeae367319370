// What the control requests from the program, as far as the answers show on the page.

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

class CountedClicks : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override { ++count; }
  bool doc_ondragstart() override { return false; }
  int count = 0;
};

class HostAnswers : public ::testing::Test {
 protected:
  platform::HtmlDocument& Show(const std::string& body) {
    EXPECT_TRUE(loaded_.ShowMarkup("<html><body style='margin:0'>" + body + "</body></html>"));
    document_ = loaded_.window().ConnectDocument(clicks_);
    return *document_;
  }
  void TearDown() override { loaded_.window().DisconnectDocument(); }

  /// Presses and releases a mouse button in the top left corner of the page.
  void Press(UINT down, UINT up, WPARAM button) const {
    constexpr LPARAM kPlace = MAKELPARAM(10, 10);
    PostMessageW(loaded_.Browser(), down, button, kPlace);
    PostMessageW(loaded_.Browser(), up, 0, kPlace);
  }

  LoadedWindow& loaded_ = SharedWindow();
  CountedClicks clicks_;
  std::shared_ptr<platform::HtmlDocument> document_;
};

TEST_F(HostAnswers, ARightClickShowsNoMenu) {
  for (const char* body :
       {"<div style='height:100px'>text</div>", "<a href='other.html'>a link</a>",
        "<img src='none.gif' width=100 height=100>",
        "<input id='field' style='width:100px; height:40px'>"}) {
    Show(body);
    clicks_.count = 0;
    Press(WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON);
    Press(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
    // A menu would be open by now, and would take the second click.
    EXPECT_TRUE(loaded_.RunUntil([&] { return clicks_.count > 0; })) << body;
    EXPECT_EQ(FindWindowW(L"#32768", nullptr), nullptr) << body;
  }
}

TEST_F(HostAnswers, TheKeysOfABrowserDoNotReachThePage) {
  auto& document = Show("<input id='field' value='abc' style='width:100px; height:40px'>");
  Press(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
  ASSERT_TRUE(loaded_.RunUntil([&] { return clicks_.count > 0; }));
  SetFocus(loaded_.Browser());
  // Backspace, which goes back to an earlier page, would delete the "c".
  for (const WPARAM key : {VK_END, VK_BACK, VK_F5, VK_HOME, VK_DELETE}) loaded_.PressKey(key);
  EXPECT_TRUE(loaded_.RunUntil([&] { return document.AllItem("field")->Value() != "abc"; }));
  EXPECT_EQ(document.AllItem("field")->Value(), "bc");
}

}  // namespace
}  // namespace kitbay::contract
