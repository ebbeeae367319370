#pragma once

#include <windows.h>

#include <vector>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// Sees keyboard and wheel messages before their windows do.
class KeyFilter {
 public:
  virtual ~KeyFilter() = default;

  /// Whether the message has been handled and goes no further.
  virtual bool HandleKey(MSG& message) = 0;
  virtual bool HandleWheel(const MSG& /*message*/) { return false; }
};

class Win32MessageLoop final : public MessageLoop {
 public:
  void Run() override;
  void Quit() override;

  /// `filter` is called until it is removed.
  void AddKeyFilter(KeyFilter& filter);
  void RemoveKeyFilter(KeyFilter& filter);

 private:
  bool IsHandledByFilter(MSG& message);

  std::vector<KeyFilter*> filters_;
};

}  // namespace kitbay::platform::win32
