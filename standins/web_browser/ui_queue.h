#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <mutex>

#include "json.h"

namespace kitbay::web_browser {

/**
 * Passes notices from the reading thread to the thread that created the queue, by posted messages.
 */
class UiQueue {
 public:
  explicit UiQueue(std::function<void(const Json&)> handle);
  ~UiQueue();
  UiQueue(const UiQueue&) = delete;
  UiQueue& operator=(const UiQueue&) = delete;

  /** May be called from any thread. A waiting picture is replaced by a newer one. */
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
