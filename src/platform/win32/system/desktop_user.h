#pragma once

#include <string>

namespace kitbay::platform::win32 {

/// Has the desktop's shell start a program, shown normally. The program runs with the rights of the
/// user whose desktop it is, whatever rights this process has. Throws `base::Failure`: 53 if there
/// is no such file, or what COM reports if there is no shell or it refuses. COM must be
/// initialised.
void StartAsDesktopUser(const std::string& path);

}  // namespace kitbay::platform::win32
