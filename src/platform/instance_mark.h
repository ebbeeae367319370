#pragma once

namespace kitbay::platform {

/// The previous-instance test, per logon session.
class InstanceMark {
 public:
  virtual ~InstanceMark() = default;

  /// Whether another instance was running when this mark was first asked.
  virtual bool PreviousInstanceExists() = 0;
};

}  // namespace kitbay::platform
