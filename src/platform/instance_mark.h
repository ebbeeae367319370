#pragma once

namespace kitbay::platform {

/// The test for a previous instance, per user of each logon session.
class InstanceMark {
 public:
  virtual ~InstanceMark() = default;

  /// Whether another instance was running when this was first called. If not, this instance is the
  /// first from then on.
  virtual bool PreviousInstanceExists() = 0;

  /// Gives up the place of the first instance. The next call of `PreviousInstanceExists` counts as
  /// the first again.
  virtual void Release() = 0;
};

}  // namespace kitbay::platform
