// What a message box does to the program's other windows.
#include <windows.h>

#include <gmock/gmock.h>

#include <vector>

#include "contract/system/win32/message_box_user.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A window of this thread that records when it is enabled and disabled.
class WatchedWindow {
 public:
  WatchedWindow(bool is_visible, bool is_enabled) {
    WNDCLASSW description{};
    description.lpfnWndProc = &WatchedWindow::Handle;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"Kitbay.Tests.Watched";
    RegisterClassW(&description);  // fails harmlessly if another window was created before
    window_ = CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 100, 100, 300,
                              200, nullptr, nullptr, description.hInstance, nullptr);
    ShowWindow(window_, is_visible ? SW_SHOW : SW_HIDE);
    EnableWindow(window_, is_enabled);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~WatchedWindow() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
  }
  WatchedWindow(const WatchedWindow&) = delete;
  WatchedWindow& operator=(const WatchedWindow&) = delete;

  HWND handle() const { return window_; }
  const std::vector<bool>& enabled() const { return enabled_; }

 private:
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const self = reinterpret_cast<WatchedWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_ENABLE) {
      self->enabled_.push_back(wparam != FALSE);
    }
    return DefWindowProcW(window, message, wparam, lparam);
  }

  HWND window_;
  std::vector<bool> enabled_;
};

void ShowAnsweredMessage() {
  MessageBoxUser user("Kitbay", "Are you sure?", IDOK);
  platform::win32::MakeDesktop()->ShowMessage("Are you sure?", "Kitbay", platform::kOkCancel);
  EXPECT_TRUE(user.SawThem());
}

TEST(ShownMessage, HoldsBackAllOfTheProgramsWindowsUntilItIsAnswered) {
  const WatchedWindow main(true, true);
  const WatchedWindow dialog(true, true);
  SetActiveWindow(dialog.handle());
  ShowAnsweredMessage();
  EXPECT_THAT(dialog.enabled(), ElementsAre(false, true));
  EXPECT_THAT(main.enabled(), ElementsAre(false, true));
}

TEST(ShownMessage, HoldsThemBackAlsoWhenNoneIsActive) {
  const WatchedWindow main(true, true);
  const WatchedWindow dialog(true, true);
  SetActiveWindow(nullptr);
  ASSERT_EQ(GetActiveWindow(), nullptr);
  ShowAnsweredMessage();
  EXPECT_THAT(dialog.enabled(), ElementsAre(false, true));
  EXPECT_THAT(main.enabled(), ElementsAre(false, true));
}

TEST(ShownMessage, LeavesHiddenAndDisabledWindowsAsTheyAre) {
  const WatchedWindow active(true, true);
  const WatchedWindow hidden(false, true);
  const WatchedWindow disabled(true, false);
  SetActiveWindow(active.handle());
  ShowAnsweredMessage();
  EXPECT_THAT(hidden.enabled(), IsEmpty());
  EXPECT_THAT(disabled.enabled(), IsEmpty());
  EXPECT_FALSE(IsWindowEnabled(disabled.handle()));
}

}  // namespace
}  // namespace kitbay::contract
