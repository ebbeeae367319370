#pragma once

#include <optional>
#include <string>

#include "platform/instance_mark.h"
#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {

/// A named mutex of the logon session. The first instance holds it from its first call of
/// `PreviousInstanceExists` until this object is destroyed.
class MutexMark : public InstanceMark {
 public:
  explicit MutexMark(std::wstring name) : name_(std::move(name)) {}

  /// If the mutex cannot be created or opened at all, there is no other instance to hand over to:
  /// false.
  bool PreviousInstanceExists() override;
  void Release() override;

 private:
  std::wstring name_;
  UniqueKernelObject mutex_;
  std::optional<bool> previous_;
};

}  // namespace kitbay::platform::win32
