#include "event_window.h"

#include <utility>

#include "platform/win32/com/com_failure.h"

namespace ovalink {
namespace {

constexpr UINT kEventPosted = WM_APP;
constexpr UINT_PTR kWatch = 1;
constexpr UINT kWatchIntervalMs = 1000;

}  // namespace

EventWindow::EventWindow(Deliver deliver, Look look)
    : deliver_(std::move(deliver)), look_(std::move(look)) {
  window_.reset(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                nullptr, nullptr));
  const DWORD error = GetLastError();
  if (!window_) {
    throw kitbay::platform::win32::FailureOf(HRESULT_FROM_WIN32(error));
  }
  SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window_.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
}

void EventWindow::Post(TransferEvent event) {
  {
    const std::lock_guard lock(mutex_);
    events_.push_back(std::move(event));
  }
  PostMessageW(window_.get(), kEventPosted, 0, 0);
}

void EventWindow::Watch(bool watch) {
  if (watch) {
    SetTimer(window_.get(), kWatch, kWatchIntervalMs, nullptr);
  } else {
    KillTimer(window_.get(), kWatch);
  }
}

bool EventWindow::DeliverNext() {
  try {
    const auto event = Take();
    if (!event) {
      return false;
    }
    const Deliver deliver = deliver_;
    deliver(*event);
  } catch (...) {
    // There is no way to report it to the system's message loop.
  }
  return true;
}

LRESULT CALLBACK EventWindow::Procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
  auto* const self = reinterpret_cast<EventWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  // One event per message, so that events which arrive while a receiver shows a dialog are also
  // delivered in order.
  if (message == kEventPosted) {
    self->DeliverNext();
  } else if (message == WM_TIMER && word == kWatch) {
    const Look look = self->look_;
    look();
  } else {
    return DefWindowProcW(window, message, word, data);
  }
  return 0;
}

std::optional<TransferEvent> EventWindow::Take() {
  const std::lock_guard lock(mutex_);
  if (events_.empty()) {
    return std::nullopt;
  }
  TransferEvent event = std::move(events_.front());
  events_.pop_front();
  return event;
}

}  // namespace ovalink
