// What the control requests from the program, as far as the answers show on the page.

#include <windows.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/page/windows/loaded_window.h"
#include "contract/windows/key_held.h"
#include "web_browser/test/dropped_file.h"

namespace kitbay::contract {
namespace {

using ::testing::ElementsAre;

/// The user's clicks and keys that reach the page.
class NotedInput : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override { ++clicks; }
  bool doc_ondragstart() override { return false; }
  bool doc_onkeydown() override {
    keys.push_back(document->EventKey().code);
    return true;
  }

  int clicks = 0;
  std::vector<int> keys;
  std::shared_ptr<platform::HtmlDocument> document;
};

/// Chooses the first item of the next menu, by keys that the menu takes before `window` does.
class MenuChoice {
 public:
  explicit MenuChoice(HWND window) : window_(window) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, kIntervalMs, Look);
  }
  ~MenuChoice() {
    KillTimer(nullptr, timer_);
    current_ = nullptr;
  }
  MenuChoice(const MenuChoice&) = delete;
  MenuChoice& operator=(const MenuChoice&) = delete;

 private:
  static constexpr UINT kIntervalMs = 20;

  static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
    if (current_ == nullptr || FindWindowW(L"#32768", nullptr) == nullptr) {
      return;
    }
    for (const WPARAM key : {VK_DOWN, VK_RETURN}) {
      PostMessageW(current_->window_, WM_KEYDOWN, key, 0);
    }
    current_ = nullptr;
  }

  static inline MenuChoice* current_ = nullptr;  // The system passes the timer nothing else.
  HWND window_;
  UINT_PTR timer_;
};

void ClearClipboard() {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  CloseClipboard();
}

/// The text on the clipboard; empty if there is none.
std::wstring ClipboardText() {
  if (!IsClipboardFormatAvailable(CF_UNICODETEXT) || !OpenClipboard(nullptr)) {
    return {};
  }
  const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const auto* text = static_cast<const wchar_t*>(memory == nullptr ? nullptr : GlobalLock(memory));
  std::wstring result = text == nullptr ? L"" : text;
  if (text != nullptr) {
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return result;
}

class HostAnswers : public ::testing::Test {
 protected:
  platform::HtmlDocument& Show(const std::string& body) {
    EXPECT_TRUE(loaded_.ShowMarkup("<html><body style='margin:0'>" + body + "</body></html>"));
    events_.document = loaded_.window().ConnectDocument(events_);
    return *events_.document;
  }
  void TearDown() override { loaded_.window().DisconnectDocument(); }

  /// Presses and releases a mouse button in the top left corner of the page.
  void Press(UINT down, UINT up, WPARAM button) const {
    constexpr LPARAM kPlace = MAKELPARAM(10, 10);
    PostMessageW(loaded_.Browser(), down, button, kPlace);
    PostMessageW(loaded_.Browser(), up, 0, kPlace);
  }

  /// Selects the word in the top left corner by a double click.
  void SelectWord() {
    events_.clicks = 0;
    Press(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
    Press(WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON);
    EXPECT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 2; }));
  }

  LoadedWindow& loaded_ = SharedWindow();
  NotedInput events_;
};

TEST_F(HostAnswers, ARightClickShowsNoMenu) {
  for (const char* body :
       {"<div style='height:100px'>text</div>", "<a href='other.html'>a link</a>",
        "<img src='none.gif' width=100 height=100>",
        "<input id='field' style='width:100px; height:40px'>"}) {
    Show(body);
    events_.clicks = 0;
    Press(WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON);
    Press(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
    // A menu would be open by now, and would take the second click.
    EXPECT_TRUE(loaded_.RunUntil([&] { return events_.clicks > 0; })) << body;
    EXPECT_EQ(FindWindowW(L"#32768", nullptr), nullptr) << body;
  }
}

TEST_F(HostAnswers, SelectedTextIsCopiedByTheMenu) {
  Show("<div style='height:100px'>word</div>");
  ClearClipboard();
  SelectWord();
  Press(WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON);
  const MenuChoice first(loaded_.Browser());
  EXPECT_TRUE(loaded_.RunUntil([] { return !ClipboardText().empty(); }));
  EXPECT_EQ(ClipboardText(), L"word");
  EXPECT_EQ(FindWindowW(L"#32768", nullptr), nullptr);
}

TEST_F(HostAnswers, SelectedTextIsCopiedByControlAndC) {
  Show("<div style='height:100px'>word</div>");
  ClearClipboard();
  SelectWord();
  SetFocus(loaded_.Browser());
  const KeyHeld control(VK_CONTROL);
  loaded_.PressKey('C');
  EXPECT_TRUE(loaded_.RunUntil([] { return !ClipboardText().empty(); }));
  EXPECT_EQ(ClipboardText(), L"word");
}

TEST_F(HostAnswers, AFileThatIsDroppedStaysWhereItWas) {
  Show("<div style='height:100px'>text</div>");
  const std::string other = loaded_.files().WriteAs("other.html", "<html></html>");
  loaded_.told.clear();
  // The control would open it by itself.
  EXPECT_EQ(web_browser::DropFile(loaded_.Browser(), std::wstring(other.begin(), other.end())),
            static_cast<DWORD>(DROPEFFECT_NONE));
  Show("<b>the next page</b>");
  EXPECT_THAT(loaded_.told, ElementsAre("WebBrowser1_DocumentComplete"));
}

TEST_F(HostAnswers, ThePageHasNoBorderOfTheControl) {
  auto& document = Show("<div id='whole' style='width:100%; height:100%'></div>");
  RECT browser{};
  GetClientRect(loaded_.Browser(), &browser);
  EXPECT_TRUE(loaded_.RunUntil([&] { return document.BodyClientHeight() == browser.bottom; }))
      << document.BodyClientHeight() << " of " << browser.bottom;
}

TEST_F(HostAnswers, AMissingPageIsReportedOnceAndItsErrorPageIsNotAccepted) {
  Show("<b>the page before</b>");
  loaded_.told.clear();
  loaded_.window().Navigate("C:\\no such folder\\AddonUpdates.html");
  EXPECT_TRUE(loaded_.RunUntil([&] { return !loaded_.told.empty(); }));
  Show("<b>the next page</b>");
  EXPECT_THAT(loaded_.told,
              ElementsAre("WebBrowser1_NavigateError", "WebBrowser1_DocumentComplete"));
}

TEST_F(HostAnswers, TheKeysOfABrowserDoNotReachThePage) {
  Show("<div style='height:100px'>text</div>");
  Press(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks > 0; }));
  SetFocus(loaded_.Browser());
  for (const WPARAM key : {VK_BACK, VK_F5, VK_F11, VK_F24, VK_DOWN}) {
    loaded_.PressKey(key);
  }
  {
    const KeyHeld control(VK_CONTROL);
    for (const char key : {'F', 'N', 'O', 'P', 'V', 'C', 'A'}) {
      loaded_.PressKey(static_cast<WPARAM>(key));
    }
    loaded_.PressKey(VK_BACK);
    loaded_.PressKey(VK_INSERT);
  }
  {
    const KeyHeld alt(VK_MENU);
    loaded_.PressKey(VK_LEFT);
  }
  loaded_.PressKey(VK_RETURN);
  EXPECT_TRUE(
      loaded_.RunUntil([&] { return !events_.keys.empty() && events_.keys.back() == VK_RETURN; }));
  EXPECT_THAT(events_.keys, ElementsAre(VK_DOWN, 'C', 'A', VK_INSERT, VK_RETURN));
}

}  // namespace
}  // namespace kitbay::contract
