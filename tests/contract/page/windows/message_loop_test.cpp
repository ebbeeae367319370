#include "platform/win32/window/message_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <queue>
#include <utility>
#include <vector>

#include "contract/page/message_loop_contract.h"

namespace kitbay::platform::win32 {
namespace {

class RecordingFilter : public KeyFilter {
 public:
  bool HandleKey(MSG& message) override {
    seen.push_back(message.wParam);
    if (on_key) {
      on_key();
    }
    return takes_keys;
  }

  std::vector<WPARAM> seen;
  std::function<void()> on_key;
  bool takes_keys = true;
};

void PostKey(WPARAM key) { PostThreadMessageW(GetCurrentThreadId(), WM_KEYDOWN, key, 0); }

TEST(MessageLoop, FiltersSeeKeysOnly) {
  Win32MessageLoop loop;
  RecordingFilter filter;
  loop.AddKeyFilter(filter);
  PostThreadMessageW(GetCurrentThreadId(), WM_MOUSEMOVE, 1, 0);
  PostKey('B');
  loop.Quit();
  loop.Run();
  EXPECT_EQ(filter.seen, std::vector<WPARAM>{'B'});
}

TEST(MessageLoop, AKeyThatAFilterTakesGoesNoFurther) {
  Win32MessageLoop loop;
  RecordingFilter first;
  RecordingFilter second;
  loop.AddKeyFilter(first);
  loop.AddKeyFilter(second);
  PostKey('A');
  loop.Quit();
  loop.Run();
  EXPECT_TRUE(second.seen.empty());
}

TEST(MessageLoop, AFilterMayRemoveAnotherWhileAKeyIsHandled) {
  Win32MessageLoop loop;
  RecordingFilter first;
  RecordingFilter second;
  first.takes_keys = false;
  first.on_key = [&] { loop.RemoveKeyFilter(second); };
  loop.AddKeyFilter(first);
  loop.AddKeyFilter(second);
  PostKey('A');
  loop.Quit();
  loop.Run();
  EXPECT_TRUE(second.seen.empty());
}

/// Its messages are keys, each of which stands for the function that was posted with it.
class Win32MessageLoopWorld : public contract::MessageLoopWorld, private KeyFilter {
 public:
  Win32MessageLoopWorld() { loop_.AddKeyFilter(*this); }
  ~Win32MessageLoopWorld() override { loop_.RemoveKeyFilter(*this); }

  MessageLoop& loop() override { return loop_; }
  void Post(std::function<void()> message) override {
    messages_.push(std::move(message));
    PostKey('A');
  }

 private:
  bool HandleKey(MSG&) override {
    const std::function<void()> message = std::move(messages_.front());
    messages_.pop();
    message();
    return true;
  }

  Win32MessageLoop loop_;
  std::queue<std::function<void()>> messages_;
};

std::unique_ptr<contract::MessageLoopWorld> MakeWorld() {
  return std::make_unique<Win32MessageLoopWorld>();
}

}  // namespace
}  // namespace kitbay::platform::win32

namespace kitbay::contract {

INSTANTIATE_TEST_SUITE_P(Win32, MessageLoopContract, testing::Values(&platform::win32::MakeWorld));

}  // namespace kitbay::contract
