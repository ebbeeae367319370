#include "platform/win32/com/instance_mark.h"

#include <memory>

#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {

bool MutexMark::PreviousInstanceExists() {
  if (!previous_) {
    mutex_.reset(CreateMutexW(nullptr, FALSE, name_.c_str()));
    const DWORD error = GetLastError();
    // Denied: it exists, made by an instance with other rights.
    previous_ = mutex_ ? error == ERROR_ALREADY_EXISTS : error == ERROR_ACCESS_DENIED;
  }
  return *previous_;
}

std::unique_ptr<InstanceMark> MakeInstanceMark() {
  return std::make_unique<MutexMark>(L"Local\\Kitbay.Manager");
}

}  // namespace kitbay::platform::win32
