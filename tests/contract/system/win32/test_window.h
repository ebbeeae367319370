#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

#include "platform/win32/system/handles.h"

namespace kitbay::contract {

/// What a test window does on the close message. One that hangs does nothing before it may answer,
/// one that asks keeps dispatching messages meanwhile; then both close.
enum class OnClose { kCloses, kStays, kHangs, kAsks };

/// A top-level window of class "Kitbay.Tests.Ä" with its own thread and message loop.
class TestWindow {
 public:
  /// The window is visible when this returns.
  TestWindow(const std::string& caption, OnClose on_close);
  ~TestWindow();
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND handle() const { return handle_; }

  /// The 32-bit value at the address in the last close message; -1 before.
  std::int32_t close_value() const { return close_value_; }

  void LetAnswer() const;

  /// The same value, as soon as the window has read it.
  std::int32_t AwaitCloseValue() const;

 private:
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  void HoldAnswer() const;

  OnClose on_close_;
  platform::win32::UniqueKernelObject may_answer_;
  platform::win32::UniqueKernelObject has_looked_;
  std::atomic<std::int32_t> close_value_ = -1;
  std::atomic<HWND> handle_ = nullptr;
  std::atomic<DWORD> thread_id_ = 0;
  std::thread thread_;
};

}  // namespace kitbay::contract
