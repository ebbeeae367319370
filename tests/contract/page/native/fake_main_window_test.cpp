#include "fakes/fake_main_window.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <utility>

#include "contract/page/main_window_contract.h"
#include "contract/page/message_loop_contract.h"

namespace kitbay::fakes {
namespace {

TEST(FakeMainWindow, CallsAreNotedInOrder) {
  FakeMainWindow window("<b id='7'></b>");
  contract::RecordingMainWindowEvents events;
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

TEST(FakeMainWindow, APageLiesInTheFolderOfItsFile) {
  FakeMainWindow window("<img id='a' src='x.gif'>");
  contract::NoEvents events;
  window.Navigate("C:\\Kitbay\\AddonUpdates.html");
  EXPECT_EQ(window.ConnectDocument(events)->AllItem("a")->Src(), "file:///C:/Kitbay/x.gif");
}

TEST(FakeMainWindow, AMemberCanBeToldToFail) {
  FakeMainWindow window("");
  window.calls().FailMember("SetHelpCursor", base::Failure(53, "File not found"));
  EXPECT_THROW(window.SetHelpCursor("C:\\none.cur"), base::Failure);
  window.calls().FailNothing();
  window.SetHelpCursor("C:\\none.cur");
}

}  // namespace
}  // namespace kitbay::fakes

namespace kitbay::contract {
namespace {

class FakeMainWindowWorld : public MainWindowWorld {
 public:
  FakeMainWindowWorld() { window_.Load(events_); }

  platform::MainWindow& window() override { return window_; }
  RecordingMainWindowEvents& events() override { return events_; }
  void ShowPage() override { window_.Navigate("C:\\Kitbay\\page.html"); }
  bool IsShown() const override { return window_.shown(); }
  bool IsProgressShown() const override { return progress_.visible(); }
  bool IsProgressInStatusBar() const override { return progress_.in_status_bar(); }
  platform::Rectangle ProgressPlace() const override { return progress_.place(); }
  int Progress() const override { return progress_.value(); }

 private:
  RecordingMainWindowEvents events_;
  fakes::FakeMainWindow window_{"<div id='list'></div>"};
  const fakes::FakeProgressBar& progress_ = window_.progress_bar();
};

class FakeMessageLoopWorld : public MessageLoopWorld {
 public:
  platform::MessageLoop& loop() override { return loop_; }
  void Post(std::function<void()> message) override { loop_.Post(std::move(message)); }

 private:
  fakes::WindowCalls calls_;
  fakes::FakeMessageLoop loop_{calls_};
};

std::unique_ptr<MainWindowWorld> MakeMainWindowWorld() {
  return std::make_unique<FakeMainWindowWorld>();
}
std::unique_ptr<MessageLoopWorld> MakeMessageLoopWorld() {
  return std::make_unique<FakeMessageLoopWorld>();
}

INSTANTIATE_TEST_SUITE_P(Fake, MainWindowContract, testing::Values(&MakeMainWindowWorld));
INSTANTIATE_TEST_SUITE_P(Fake, MessageLoopContract, testing::Values(&MakeMessageLoopWorld));

}  // namespace
}  // namespace kitbay::contract
