#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// What the COM server that contains this code registers below Software\Classes, for the user or
/// for the machine: its classes, and the type library in its resource 1 with the dual interfaces.
struct ServerRegistration {
  enum class Kind { kInProcess, kLocalServer };
  struct Class {
    GUID id;
    std::wstring prog_id;
  };

  HKEY hive = HKEY_CURRENT_USER;
  Kind kind = Kind::kInProcess;
  std::vector<Class> classes;
};

/// Registers whatever is missing or differs. Throws `base::Failure` with the HRESULT if the
/// registry refuses.
void KeepRegistered(const ServerRegistration& server);

/// Removes everything that `KeepRegistered` writes; what is already missing is not a failure.
void Unregister(const ServerRegistration& server);

}  // namespace kitbay::platform::win32
