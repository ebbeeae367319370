#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/main_window.h"

namespace kitbay::contract {

/// A message loop, and a way to send it messages.
class MessageLoopWorld {
 public:
  virtual ~MessageLoopWorld() = default;
  virtual platform::MessageLoop& loop() = 0;

  /// Queues `message` for the loop to handle.
  virtual void Post(std::function<void()> message) = 0;
};

class MessageLoopContract : public testing::TestWithParam<std::unique_ptr<MessageLoopWorld> (*)()> {
 protected:
  /// A message that appends its name to `done_`.
  void Post(const std::string& name) {
    world_->Post([this, name] { done_ += name; });
  }

  std::string done_;
  std::unique_ptr<MessageLoopWorld> world_ = GetParam()();
};

TEST_P(MessageLoopContract, QuitBeforeRunEndsItAfterTheMessagesThatWait) {
  Post("a");
  Post("b");
  world_->loop().Quit();
  world_->loop().Run();
  EXPECT_EQ(done_, "ab");
}

TEST_P(MessageLoopContract, QuitWithinAMessageEndsItAfterThoseThatWait) {
  Post("a");
  world_->Post([&] { world_->loop().Quit(); });
  Post("b");
  world_->loop().Run();
  EXPECT_EQ(done_, "ab");
}

TEST_P(MessageLoopContract, WhatIsPostedBeforeTheEndIsHandledToo) {
  world_->loop().Quit();
  world_->Post([&] { Post("a"); });
  world_->loop().Run();
  EXPECT_EQ(done_, "a");
}

TEST_P(MessageLoopContract, RunsAgainAfterItsEnd) {
  world_->loop().Quit();
  world_->loop().Run();
  Post("a");
  EXPECT_EQ(done_, "");
  world_->loop().Quit();
  world_->loop().Run();
  EXPECT_EQ(done_, "a");
}

}  // namespace kitbay::contract
