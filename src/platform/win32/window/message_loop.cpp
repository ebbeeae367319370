#include "platform/win32/window/message_loop.h"

#include <algorithm>
#include <memory>

#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {

void Win32MessageLoop::Run() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsHandledByFilter(message)) {
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void Win32MessageLoop::Quit() { PostQuitMessage(0); }

void Win32MessageLoop::AddKeyFilter(KeyFilter& filter) { filters_.push_back(&filter); }

void Win32MessageLoop::RemoveKeyFilter(KeyFilter& filter) { std::erase(filters_, &filter); }

bool Win32MessageLoop::IsHandledByFilter(MSG& message) {
  const bool is_key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  const bool is_wheel = message.message == WM_MOUSEWHEEL;
  if (!is_key && !is_wheel) {
    return false;
  }
  // Copied, because a key may close the window whose filter is being called.
  const std::vector<KeyFilter*> filters = filters_;
  return std::any_of(filters.begin(), filters.end(), [&](KeyFilter* filter) {
    const bool is_still_there =
        std::find(filters_.begin(), filters_.end(), filter) != filters_.end();
    if (!is_still_there) {
      return false;
    }
    return is_key ? filter->HandleKey(message) : filter->HandleWheel(message);
  });
}

void DisableGhostWindows() { DisableProcessWindowsGhosting(); }

std::unique_ptr<MessageLoop> MakeMessageLoop() { return std::make_unique<Win32MessageLoop>(); }

}  // namespace kitbay::platform::win32
