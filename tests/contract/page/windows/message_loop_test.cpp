#include "platform/win32/window/message_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace kitbay::platform::win32 {
namespace {

class RecordingFilter : public KeyFilter {
 public:
  bool HandleKey(MSG& message) override {
    seen.push_back(message.wParam);
    if (on_key) on_key();
    return takes_keys;
  }

  std::vector<WPARAM> seen;
  std::function<void()> on_key;
  bool takes_keys = true;
};

void PostKey(WPARAM key) { PostThreadMessageW(GetCurrentThreadId(), WM_KEYDOWN, key, 0); }

TEST(MessageLoop, RunsUntilQuit) {
  Win32MessageLoop loop;
  RecordingFilter filter;
  filter.on_key = [&] { loop.Quit(); };
  loop.AddKeyFilter(filter);
  PostKey('A');
  loop.Run();
  EXPECT_EQ(filter.seen, std::vector<WPARAM>{'A'});
}

TEST(MessageLoop, QuitBeforeRunEndsItAfterTheMessagesThatWait) {
  Win32MessageLoop loop;
  RecordingFilter filter;
  loop.AddKeyFilter(filter);
  PostKey('A');
  loop.Quit();
  loop.Run();
  EXPECT_EQ(filter.seen, std::vector<WPARAM>{'A'});
}

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

}  // namespace
}  // namespace kitbay::platform::win32
