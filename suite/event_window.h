#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/win32/system/handles.h"
#include "transfer_event.h"

namespace ovalink {

struct WindowTraits {
  using Type = HWND;
  static Type Invalid() { return nullptr; }
  static void Close(Type window) { DestroyWindow(window); }
};

/// Brings events to the thread that created it, one at a time and in order, while that thread
/// handles its messages. Belongs to that thread but for `Post`.
class EventWindow {
 public:
  using Deliver = std::function<void(const TransferEvent&)>;

  /// Throws `kitbay::base::Failure` when the system has no window left. `deliver` may
  /// destroy this object.
  explicit EventWindow(Deliver deliver);
  EventWindow(const EventWindow&) = delete;
  EventWindow& operator=(const EventWindow&) = delete;

  /// From any thread, as long as this object lives.
  void Post(TransferEvent event);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM word, LPARAM data);
  std::optional<TransferEvent> Take();

  Deliver deliver_;
  std::mutex mutex_;
  std::deque<TransferEvent> events_;
  kitbay::platform::win32::UniqueHandle<WindowTraits> window_;
};

}  // namespace ovalink
