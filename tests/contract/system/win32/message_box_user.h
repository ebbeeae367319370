#pragma once

#include <windows.h>

#include <future>
#include <string>

#include "platform/win32/system/handles.h"

namespace kitbay::contract {

/// A user who waits, on a separate thread, for a message box of the thread that created this
/// object, checks its title and text and presses a button.
class MessageBoxUser {
 public:
  MessageBoxUser(const std::string& title, const std::string& text, int answer);
  ~MessageBoxUser();
  MessageBoxUser(const MessageBoxUser&) = delete;
  MessageBoxUser& operator=(const MessageBoxUser&) = delete;

  /// Whether the message box had the title and the text. Waits until it was answered.
  bool SawThem() { return saw_them_.get(); }

 private:
  platform::win32::UniqueKernelObject shown_;
  HHOOK hook_;
  std::future<bool> saw_them_;
};

}  // namespace kitbay::contract
