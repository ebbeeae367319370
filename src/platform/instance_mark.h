#pragma once

namespace kitbay::platform {

/// The previous-instance test, for each user of each logon session.
class InstanceMark {
 public:
  virtual ~InstanceMark() = default;

  /// Whether another instance was running when this mark was first asked. Where there was none,
  /// this one is the first from then on.
  virtual bool PreviousInstanceExists() = 0;

  /// Leaves the place of the first instance to another. The next question is a first one again.
  virtual void Release() = 0;
};

}  // namespace kitbay::platform
