#pragma once

#include <string>

#include "platform/win32/system/handles.h"

namespace kitbay::contract {

/// Copies one of the sample libraries that cause trouble, such as "OvlSlow", to `path`.
void CopyTroubledLibrary(const std::string& name, const std::string& path);

/// Decides when the function of OvlSlow.dll returns.
class SlowLibrary {
 public:
  SlowLibrary();
  void LetReturn() const;

 private:
  platform::win32::UniqueKernelObject may_return_;
};

}  // namespace kitbay::contract
