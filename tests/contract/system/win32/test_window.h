#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

namespace kitbay::contract {

/// A top-level window of class "Kitbay.Tests.Ä" with a thread and a message loop of its own.
class TestWindow {
 public:
  /// Shown when it returns. Closes when it is told to unless `stays`.
  TestWindow(const std::string& caption, bool stays);
  ~TestWindow();
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND handle() const { return handle_; }

  /// The 32-bit value at the address that the last close message carried; -1 before.
  std::int32_t close_value() const { return close_value_; }

 private:
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  bool stays_;
  std::atomic<std::int32_t> close_value_ = -1;
  std::atomic<HWND> handle_ = nullptr;
  std::atomic<DWORD> thread_id_ = 0;
  std::thread thread_;
};

}  // namespace kitbay::contract
