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

  using Look = std::function<void()>;

  /// Throws `kitbay::base::Failure` when the system has no window left. `look` is called once a
  /// second while the window watches. Both may destroy this object.
  EventWindow(Deliver deliver, Look look);
  EventWindow(const EventWindow&) = delete;
  EventWindow& operator=(const EventWindow&) = delete;

  /// From any thread, as long as this object lives. The system may refuse to wake the thread.
  void Post(TransferEvent event);

  /// Delivers the next event, if there is one; returns whether there was. Does not throw.
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
