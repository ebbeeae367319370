#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <mutex>

#include "json.h"

namespace kitbay::web_browser {

/** Carries notices from the reading thread to the thread that made the queue, by posted messages.
 */
class UiQueue {
 public:
  explicit UiQueue(std::function<void(const Json&)> handle);
  ~UiQueue();
  UiQueue(const UiQueue&) = delete;
  UiQueue& operator=(const UiQueue&) = delete;

  /** From any thread. A picture that waits is replaced by a newer one. */
  void Push(Json notice);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void HandleOne() noexcept;

  std::function<void(const Json&)> handle_;
  HWND window_;
  std::mutex mutex_;
  std::deque<Json> notices_;
};

}  // namespace kitbay::web_browser
