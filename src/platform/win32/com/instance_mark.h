#pragma once

#include <optional>
#include <string>

#include "platform/instance_mark.h"
#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// A named mutex of the logon session, held by the first instance from its first question until
/// this object ends.
class MutexMark : public InstanceMark {
 public:
  explicit MutexMark(std::wstring name) : name_(std::move(name)) {}

  /// When the mutex cannot be had at all there is no other instance to hand over to: false.
  bool PreviousInstanceExists() override;
  void Release() override;

 private:
  std::wstring name_;
  UniqueKernelObject mutex_;
  std::optional<bool> previous_;
};

}  // namespace kitbay::platform::win32
