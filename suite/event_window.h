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

/// Delivers events to the thread that created it, one at a time and in order, while that thread
/// handles its messages. Except for `Post`, only that thread may use it.
class EventWindow {
 public:
  using Deliver = std::function<void(const TransferEvent&)>;

  using Look = std::function<void()>;

  /// Throws `kitbay::base::Failure` if the system can create no more windows. Calls `look` once a
  /// second while the window watches. Both callbacks may destroy this object.
  EventWindow(Deliver deliver, Look look);
  EventWindow(const EventWindow&) = delete;
  EventWindow& operator=(const EventWindow&) = delete;

  /// May be called from any thread while this object lives. The system may refuse to wake the
  /// thread.
  void Post(TransferEvent event);

  /// Delivers the next event, if there is one, and returns whether there was. Does not throw.
  bool DeliverNext();

  void Watch(bool watch);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM word, LPARAM data);
  std::optional<TransferEvent> Take();

  Deliver deliver_;
  Look look_;
  std::mutex mutex_;
  std::deque<TransferEvent> events_;
  kitbay::platform::win32::UniqueHandle<WindowTraits> window_;
};

}  // namespace ovalink
