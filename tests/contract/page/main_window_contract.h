#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/page/html_document_host.h"
#include "contract/page/main_window_events.h"
#include "platform/main_window.h"

namespace kitbay::contract {

/// A loaded main window, and what its user sees.
class MainWindowWorld {
 public:
  virtual ~MainWindowWorld() = default;
  virtual platform::MainWindow& window() = 0;

  /// The receiver with which it was loaded.
  virtual RecordingMainWindowEvents& events() = 0;

  /// Shows a page with an element "list" and waits until it is complete.
  virtual void ShowPage() = 0;

  virtual bool IsShown() const = 0;
  virtual bool IsProgressShown() const = 0;
  virtual bool IsProgressInStatusBar() const = 0;

  /// The progress bar's place within its parent, and its value.
  virtual platform::Rectangle ProgressPlace() const = 0;
  virtual int Progress() const = 0;
};

class MainWindowContract : public testing::TestWithParam<std::unique_ptr<MainWindowWorld> (*)()> {
 protected:
  platform::MainWindow& window() { return world_->window(); }
  const std::vector<std::string>& told() { return world_->events().told; }

  std::unique_ptr<MainWindowWorld> world_ = GetParam()();
};

TEST_P(MainWindowContract, StartsHidden) {
  EXPECT_NE(window().Handle(), platform::WindowHandle{});
  EXPECT_FALSE(world_->IsShown());
  window().Show();
  EXPECT_TRUE(world_->IsShown());
}

TEST_P(MainWindowContract, PanelsKeepTheirTexts) {
  platform::StatusBar& bar = window().status_bar();
  EXPECT_EQ(bar.PanelText(2), "");
  bar.SetPanelText(1, "left");
  bar.SetPanelText(2, "Downloading B\xC3\xBCro");
  EXPECT_EQ(bar.PanelText(1), "left");
  EXPECT_EQ(bar.PanelText(2), "Downloading B\xC3\xBCro");
  bar.SetPanelText(2, "");
  EXPECT_EQ(bar.PanelText(2), "");
}

TEST_P(MainWindowContract, ThereAreTwoPanelsSideBySide) {
  platform::StatusBar& bar = window().status_bar();
  const platform::Rectangle first = bar.PanelRectangle(1);
  const platform::Rectangle second = bar.PanelRectangle(2);
  EXPECT_GE(first.right - first.left, 100);
  EXPECT_GT(first.bottom - first.top, 10);
  EXPECT_GE(second.left, first.right);
  EXPECT_GT(second.right, second.left);
  EXPECT_EQ(FailureNumber([&] { bar.PanelText(0); }), 9);
  EXPECT_EQ(FailureNumber([&] { bar.PanelText(3); }), 9);
  EXPECT_EQ(FailureNumber([&] { bar.SetPanelText(3, ""); }), 9);
  EXPECT_EQ(FailureNumber([&] { bar.PanelRectangle(3); }), 9);
}

TEST_P(MainWindowContract, TheProgressBarMovesIntoTheStatusBarAndBack) {
  platform::ProgressBar& progress = window().progress_bar();
  window().Show();
  EXPECT_FALSE(world_->IsProgressShown());

  progress.SetParent(true);
  EXPECT_TRUE(world_->IsProgressInStatusBar());
  const platform::Rectangle panel = window().status_bar().PanelRectangle(1);
  progress.Move(panel);
  progress.SetVisible(true);
  EXPECT_TRUE(world_->IsProgressShown());
  EXPECT_EQ(world_->ProgressPlace(), panel);

  progress.SetParent(false);
  EXPECT_FALSE(world_->IsProgressInStatusBar());
  progress.SetVisible(false);
  EXPECT_FALSE(world_->IsProgressShown());
}

TEST_P(MainWindowContract, ProgressIsCutToAHundredPercent) {
  platform::ProgressBar& progress = window().progress_bar();
  progress.SetValue(42);
  EXPECT_EQ(world_->Progress(), 42);
  progress.SetValue(250);
  EXPECT_EQ(world_->Progress(), 100);
  progress.SetValue(-1);
  EXPECT_EQ(world_->Progress(), 0);
}

TEST_P(MainWindowContract, WithoutAPageThereIsNoDocument) {
  NoEvents events;
  EXPECT_EQ(FailureNumber([&] { window().ConnectDocument(events); }), 91);
  EXPECT_NO_THROW(window().DisconnectDocument());
}

TEST_P(MainWindowContract, EachPageHasADocumentThatEndsWithIt) {
  NoEvents events;
  world_->ShowPage();
  const auto first = window().ConnectDocument(events);
  EXPECT_TRUE(first->AllItem("list"));
  world_->ShowPage();
  EXPECT_EQ(FailureNumber([&] { first->AllItem("list"); }), kPageIsLeft);
  const auto second = window().ConnectDocument(events);
  EXPECT_TRUE(second->AllItem("list"));
  window().Unload();
  EXPECT_EQ(FailureNumber([&] { second->AllItem("list"); }), kPageIsLeft);
}

TEST_P(MainWindowContract, UnloadReportsOnceAndEndsTheWindow) {
  window().Unload();
  EXPECT_EQ(window().Handle(), platform::WindowHandle{});
  window().Unload();
  EXPECT_THAT(told(), testing::ElementsAre("Form_Unload"));
}

TEST_P(MainWindowContract, UnloadingWhileItUnloadsDoesNothing) {
  bool existed = false;
  world_->events().on_told = [&](const std::string&) {
    window().Unload();
    existed = window().Handle() != platform::WindowHandle{};
  };
  window().Unload();
  EXPECT_TRUE(existed);
  EXPECT_THAT(told(), testing::ElementsAre("Form_Unload"));
}

TEST_P(MainWindowContract, AnUnloadedWindowHasNoPartsToUse) {
  NoEvents events;
  window().status_bar().SetPanelText(2, "earlier");
  window().Unload();
  EXPECT_EQ(FailureNumber([&] { window().status_bar(); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().progress_bar(); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().Show(); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().FitBrowser(); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().Navigate("C:\\p.html"); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().ConnectDocument(events); }), 91);
  EXPECT_EQ(FailureNumber([&] { window().SetHelpCursor("C:\\p.cur"); }), 91);
  EXPECT_NO_THROW(window().DisconnectDocument());
  window().Load(world_->events());
  EXPECT_NE(window().Handle(), platform::WindowHandle{});
  EXPECT_EQ(window().status_bar().PanelText(2), "");
}

}  // namespace kitbay::contract
