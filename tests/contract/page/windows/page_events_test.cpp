#include <windows.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordedPageEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override {
    ++clicks;
    on_click();
  }
  bool doc_ondragstart() override {
    ++drags;
    return false;
  }

  int clicks = 0;
  int drags = 0;
  std::function<void()> on_click = [] {};
};

/// Three places, one below another and each 40 pixels high: a name, a button, a disabled button.
constexpr const char* kPage =
    "<html><body style='margin:0'>"
    "<div id='row' style='position:absolute; top:0; left:0; width:300px; height:40px'>"
    "<span id='7'>some text of a row to press upon</span></div>"
    "<input type='button' id='btninstalled' value='Remove' "
    "style='position:absolute; top:40px; left:0; width:300px; height:40px'>"
    "<input type='button' id='btnchange' value='Update' disabled "
    "style='position:absolute; top:80px; left:0; width:300px; height:40px'>"
    "<a id='link' href='other.html' "
    "style='position:absolute; top:120px; left:0; width:300px; height:40px'>elsewhere</a>"
    "<a id='window' href='other.html' target='_blank' "
    "style='position:absolute; top:160px; left:0; width:300px; height:40px'>elsewhere</a>"
    "</body></html>";

constexpr int kNameAt = 8;
constexpr int kButtonAt = 60;
constexpr int kDisabledButtonAt = 100;
constexpr int kLinkAt = 128;
constexpr int kWindowLinkAt = 168;

class PageEvents : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(loaded_.ShowMarkup(kPage));
    document_ = loaded_.window().ConnectDocument(events_);
    events_.on_click = [this] {
      const auto source = document_->EventSource();
      sources_.push_back(source ? source->Id() : "none");
    };
  }
  void TearDown() override { loaded_.window().DisconnectDocument(); }

  void Mouse(UINT message, WPARAM keys, int x, int y) {
    PostMessageW(loaded_.Browser(), message, keys, MAKELPARAM(x, y));
  }

  void Click(int y) {
    Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 20, y);
    Mouse(WM_LBUTTONUP, 0, 20, y);
  }

  LoadedWindow& loaded_ = SharedWindow();
  RecordedPageEvents events_;
  std::shared_ptr<platform::HtmlDocument> document_;
  std::vector<std::string> sources_;
};

TEST_F(PageEvents, AClickComesWithTheElementThatWasHit) {
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 1; }));
  Click(kButtonAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 2; }));
  EXPECT_THAT(sources_, ElementsAre("7", "btninstalled"));
}

TEST_F(PageEvents, ThereIsNoSourceBetweenEvents) {
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 1; }));
  EXPECT_EQ(document_->EventSource(), nullptr);
}

TEST_F(PageEvents, EventsComeOnTheThreadOfTheWindow) {
  DWORD thread = 0;
  events_.on_click = [&] { thread = GetCurrentThreadId(); };
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 1; }));
  EXPECT_EQ(thread, GetCurrentThreadId());
}

TEST_F(PageEvents, AHandlerMayChangeThePage) {
  events_.on_click = [&] {
    document_->AllItem("row")->InsertAdjacentHtml("beforeEnd", "<b id='8'>added</b>");
    document_->AllItem("7")->RemoveNode(true);
  };
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 1; }));
  EXPECT_EQ(document_->AllItem("7"), nullptr);
  EXPECT_EQ(document_->AllItem("row")->InnerText(), "added");
}

TEST_F(PageEvents, AFailureInAHandlerGoesNoFurther) {
  events_.on_click = [] { throw base::Failure(base::RuntimeError::kObjectVariableNotSet); };
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 1; }));
  Click(kNameAt);
  EXPECT_TRUE(loaded_.RunUntil([&] { return events_.clicks == 2; }));
}

TEST_F(PageEvents, ADisabledButtonRaisesNoClick) {
  Click(kDisabledButtonAt);
  Click(kButtonAt);  // the marker: events arrive in the order in which they were raised
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks > 0; }));
  EXPECT_THAT(sources_, ElementsAre("btninstalled"));
}

TEST_F(PageEvents, ADragIsOfferedOnceAndIsNoClick) {
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 20, kLinkAt);
  for (int x = 22; x < 60; x += 4) {
    Mouse(WM_MOUSEMOVE, MK_LBUTTON, x, kLinkAt + 2);
  }
  EXPECT_TRUE(loaded_.RunUntil([&] { return events_.drags > 0; }));
  Mouse(WM_LBUTTONUP, 0, 400, kLinkAt);
  Click(kButtonAt);  // the marker: events arrive in the order in which they were raised
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks > 0; }));
  EXPECT_THAT(sources_, ElementsAre("btninstalled"));
  EXPECT_EQ(events_.drags, 1);
}

TEST_F(PageEvents, AfterDisconnectingNothingIsReported) {
  loaded_.window().DisconnectDocument();
  RecordedPageEvents later;
  Click(kNameAt);
  const auto again = loaded_.window().ConnectDocument(later);
  Click(kButtonAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return later.clicks > 0; }));
  EXPECT_EQ(events_.clicks, 0);
}

TEST_F(PageEvents, ConnectingAgainReportsEachEventOnce) {
  document_ = loaded_.window().ConnectDocument(events_);
  Click(kNameAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return events_.clicks > 0; }));
  Click(kButtonAt);
  ASSERT_TRUE(loaded_.RunUntil([&] { return sources_.size() > 1; }));
  EXPECT_THAT(sources_, ElementsAre("7", "btninstalled"));
}

TEST_F(PageEvents, ALinkIsNotFollowed) {
  loaded_.files().WriteAs("other.html", "<html><body id='other'></body></html>");
  loaded_.told.clear();
  Click(kLinkAt);
  Click(kWindowLinkAt);
  Click(kButtonAt);  // still there to be pressed
  ASSERT_TRUE(loaded_.RunUntil([&] { return sources_.size() > 2; }));
  EXPECT_THAT(sources_, ElementsAre("link", "window", "btninstalled"));
  EXPECT_THAT(loaded_.told, IsEmpty());
  EXPECT_NE(document_->AllItem("link"), nullptr);
}

}  // namespace
}  // namespace kitbay::contract
