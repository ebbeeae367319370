#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// What the COM server that this code is linked into enters below Software\Classes, for its user or
/// for the machine: its classes, and the type library that it carries as its
/// resource 1 with the dual interfaces in it.
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

/// Writes all of it where it is missing or differs. Throws `base::Failure` with the HRESULT when
/// the registry refuses.
void KeepRegistered(const ServerRegistration& server);

/// Removes all that `KeepRegistered` writes; what is missing already is no failure.
void Unregister(const ServerRegistration& server);

}  // namespace kitbay::platform::win32
