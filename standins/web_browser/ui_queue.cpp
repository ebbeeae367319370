#include "ui_queue.h"

#include <algorithm>

#include "window_class.h"

namespace kitbay::web_browser {
namespace {

constexpr wchar_t kQueueClassName[] = L"WebBrowserStandinQueue";
constexpr UINT kNoticeMessage = WM_APP;

bool IsPicture(const Json& notice) { return notice.at("t") == "frame" && notice.contains("data"); }

}  // namespace

UiQueue::UiQueue(std::function<void(const Json&)> handle) : handle_(std::move(handle)) {
  window_ = CreateOwnedWindow(kQueueClassName, 0, Procedure, HWND_MESSAGE, 0, RECT{}, this);
}

UiQueue::~UiQueue() { DestroyWindow(window_); }

void UiQueue::Push(Json notice) {
  {
    const std::lock_guard lock(mutex_);
    if (IsPicture(notice)) {
      std::erase_if(notices_, IsPicture);
    }
    notices_.push_back(std::move(notice));
  }
  PostMessageW(window_, kNoticeMessage, 0, 0);
}

LRESULT CALLBACK UiQueue::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* queue = OwnerOf<UiQueue>(window, message, lparam);
  if (!queue || message != kNoticeMessage) {
    return DefWindowProcW(window, message, wparam, lparam);
  }
  queue->HandleOne();
  return 0;
}

void UiQueue::HandleOne() noexcept {
  try {
    Json notice;
    {
      const std::lock_guard lock(mutex_);
      if (notices_.empty()) {
        return;  // The message was for a picture that was replaced.
      }
      notice = std::move(notices_.front());
      notices_.pop_front();
    }
    // The host may release the control, and this queue with it, while it handles the notice.
    const auto handle = handle_;
    handle(notice);
  } catch (const std::exception& error) {
    OutputDebugStringA(error.what());
  }
}

}  // namespace kitbay::web_browser
