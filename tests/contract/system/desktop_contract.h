#pragma once

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <string>

#include "platform/desktop.h"

namespace kitbay::contract {

/// A desktop to test, with a user and windows of other programs.
class DesktopWorld {
 public:
  virtual ~DesktopWorld() = default;
  virtual platform::Desktop& desktop() = 0;

  /// Adds a top-level window of class "Kitbay.Tests.Ä" to the desktop. It closes on the close
  /// message unless `stays`.
  virtual platform::WindowHandle AddWindow(const std::string& caption, bool stays) = 0;
  virtual bool HasWindow(platform::WindowHandle window) const = 0;

  /// These windows do not finish handling the close message before `LetAnswer`: meanwhile they do
  /// nothing, or ask their user in their own message loop.
  virtual platform::WindowHandle AddHangingWindow(const std::string& caption) = 0;
  virtual platform::WindowHandle AddAskingWindow(const std::string& caption) = 0;
  virtual void LetAnswer() = 0;

  /// Has the user answer the next message box with that title and text.
  virtual void AnswerNext(const std::string& title, const std::string& text, int answer) = 0;

  /// Whether the last answered message box had the expected title and text.
  virtual bool UserSawThem() = 0;
};

class DesktopContract : public testing::TestWithParam<std::unique_ptr<DesktopWorld> (*)()> {
 protected:
  platform::Desktop& desktop() { return world_->desktop(); }
  platform::WindowHandle Find(const std::string& caption) {
    return desktop().FindTopWindow("Kitbay.Tests.Ä", caption);
  }

  std::unique_ptr<DesktopWorld> world_ = GetParam()();
};

TEST_P(DesktopContract, TheSystemIsOfTheNtFamily) {
  EXPECT_EQ(desktop().PlatformId(), platform::kPlatformNt);
}

TEST_P(DesktopContract, AWindowIsFoundByClassAndCaption) {
  const auto first = world_->AddWindow("OvlTest Größe", false);
  const auto second = world_->AddWindow("OvlTest other", false);
  EXPECT_EQ(Find("OvlTest Größe"), first);
  EXPECT_EQ(Find("OvlTest other"), second);
  EXPECT_EQ(desktop().FindTopWindow("KITBAY.TESTS.Ä", "OVLTEST GRÖßE"), first);
}

TEST_P(DesktopContract, NoOtherWindowIsFound) {
  world_->AddWindow("OvlTest Größe", false);
  const platform::WindowHandle none;
  EXPECT_EQ(Find("OvlTest"), none);
  EXPECT_EQ(Find("OvlTest Größe 2"), none);
  EXPECT_EQ(Find(""), none);
  EXPECT_EQ(desktop().FindTopWindow("Kitbay.Tests", "OvlTest Größe"), none);
}

TEST_P(DesktopContract, AWindowHasHandledTheCloseMessageAfterwards) {
  const auto window = world_->AddWindow("OvlTest closes", false);
  desktop().SendClose(window);
  EXPECT_FALSE(world_->HasWindow(window));
  EXPECT_EQ(Find("OvlTest closes"), platform::WindowHandle{});
}

TEST_P(DesktopContract, AWindowMayIgnoreTheCloseMessage) {
  const auto window = world_->AddWindow("OvlTest stays", true);
  desktop().SendClose(window);
  EXPECT_TRUE(world_->HasWindow(window));
  EXPECT_EQ(Find("OvlTest stays"), window);
}

TEST_P(DesktopContract, AWindowThatHangsOrAsksIsNotWaitedForLong) {
  for (const bool hangs : {true, false}) {
    const auto window =
        hangs ? world_->AddHangingWindow("OvlTest hangs") : world_->AddAskingWindow("OvlTest asks");
    auto sent = std::async(std::launch::async, [&] { desktop().SendClose(window); });
    // However long that takes on a busy machine, the window does not answer before it has ended.
    sent.get();
    EXPECT_TRUE(world_->HasWindow(window)) << hangs;
    world_->LetAnswer();
  }
}

TEST_P(DesktopContract, ClosingNoWindowDoesNothing) {
  const auto window = world_->AddWindow("OvlTest untouched", false);
  desktop().SendClose({});
  EXPECT_TRUE(world_->HasWindow(window));
}

TEST_P(DesktopContract, AMessageIsAnsweredWithOk) {
  const std::string text = "Kitbay has detected that Größe 設 has not been installed properly.";
  world_->AnswerNext(platform::kMessageTitle, text, platform::kAnswerOk);
  EXPECT_EQ(desktop().ShowMessage(text, platform::kMessageTitle, platform::kOkOnly),
            platform::kAnswerOk);
  EXPECT_TRUE(world_->UserSawThem());
}

TEST_P(DesktopContract, AQuestionIsAnsweredWithOkOrCancel) {
  for (const int answer : {platform::kAnswerCancel, platform::kAnswerOk}) {
    world_->AnswerNext("Ein Titel ä", "Are you sure?", answer);
    EXPECT_EQ(desktop().ShowMessage("Are you sure?", "Ein Titel ä", platform::kOkCancel), answer);
    EXPECT_TRUE(world_->UserSawThem());
  }
}

}  // namespace kitbay::contract
