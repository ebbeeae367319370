#include "fakes/fake_main_window.h"

#include <gmock/gmock.h>

namespace kitbay::fakes {
namespace {

class CountingEvents : public platform::MainWindowEvents {
 public:
  explicit CountingEvents(FakeMainWindow& window) : window_(window) {}
  void Form_Unload() override {
    ++unloads;
    window_.Unload();
  }
  void CmdClose_Click() override { window_.Unload(); }
  void cmdPreference_Click() override {}
  void Form_KeyDown(int) override {}
  void lblHelp_Click() override {}
  void lblHelp_MouseMove() override {}
  void WebBrowser1_DocumentComplete() override {}

  int unloads = 0;

 private:
  FakeMainWindow& window_;
};

class NoDocumentEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override {}
  bool doc_ondragstart() override { return false; }
};

TEST(FakeMainWindow, CallsAreNotedInOrder) {
  FakeMainWindow window("<b id='7'></b>");
  CountingEvents events(window);
  window.Load(events);
  window.Show();
  window.Navigate("C:\\Kitbay\\AddonUpdates.html");
  window.status_bar().SetPanelText(2, "Ready");
  window.progress_bar().SetValue(140);
  EXPECT_THAT(window.calls().all(),
              testing::ElementsAre("Load", "Show", "Navigate C:\\Kitbay\\AddonUpdates.html",
                                   "SetPanelText 2 Ready", "SetValue 140"));
  EXPECT_EQ(window.status_bar().PanelText(2), "Ready");
  EXPECT_EQ(window.progress_bar().value(), 100);
}

TEST(FakeMainWindow, UnloadTellsTheFormOnce) {
  FakeMainWindow window("");
  CountingEvents events(window);
  window.Unload();
  EXPECT_EQ(events.unloads, 0);
  window.Load(events);
  window.events()->CmdClose_Click();
  EXPECT_EQ(events.unloads, 1);
  EXPECT_EQ(window.Handle(), platform::WindowHandle{});
  window.Unload();
  EXPECT_EQ(events.unloads, 1);
}

TEST(FakeMainWindow, EachNavigationGivesANewDocument) {
  FakeMainWindow window("<img id='a' src='x.gif'>");
  NoDocumentEvents events;
  EXPECT_THROW(window.ConnectDocument(events), base::Failure);
  window.Navigate("C:\\Kitbay\\AddonUpdates.html");
  const auto first = window.ConnectDocument(events);
  EXPECT_EQ(first->AllItem("a")->Src(), "file:///C:/Kitbay/x.gif");
  window.Navigate("C:\\Kitbay\\AddonUpdates.html");
  EXPECT_THROW(first->AllItem("a"), base::Failure);
  EXPECT_TRUE(window.ConnectDocument(events)->AllItem("a"));
}

TEST(FakeMainWindow, AMemberCanBeToldToFail) {
  FakeMainWindow window("");
  window.calls().FailMember("SetHelpCursor", base::Failure(53, "File not found"));
  EXPECT_THROW(window.SetHelpCursor("C:\\none.cur"), base::Failure);
  window.calls().FailNothing();
  window.SetHelpCursor("C:\\none.cur");
}

TEST(FakeMainWindow, ThereAreThreePanels) {
  FakeMainWindow window("");
  EXPECT_THROW(window.status_bar().SetPanelText(0, "x"), base::Failure);
  EXPECT_EQ(window.status_bar().PanelText(3), "");
  EXPECT_THROW(window.status_bar().PanelText(4), base::Failure);
}

TEST(FakeMessageLoop, RunsItsMessagesUntilItIsLeft) {
  FakeMainWindow window("");
  std::string done;
  window.message_loop().Post([&] { done += "a"; });
  window.message_loop().Post([&] { window.message_loop().Quit(); });
  window.message_loop().Post([&] { done += "b"; });
  window.message_loop().Run();
  EXPECT_EQ(done, "a");
}

}  // namespace
}  // namespace kitbay::fakes
