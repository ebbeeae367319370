#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// What a COM server enters for its user below HKEY_CURRENT_USER\Software\Classes.
struct ServerRegistration {
  enum class Kind { kInProcess, kLocalServer };
  struct Class {
    GUID id;
    std::wstring prog_id;
    std::wstring name;
  };
  struct Interface {
    GUID id;
    std::wstring name;
  };

  Kind kind = Kind::kInProcess;
  std::wstring module_path;  ///< the server's executable or library; it carries the type library
  GUID type_library;
  std::wstring type_library_name;
  std::wstring version = L"1.0";  ///< of the type library
  std::vector<Class> classes;
  std::vector<Interface> interfaces;  ///< dual ones, carried between processes by automation
};

/// Writes the classes, the type library and its interfaces where they are missing or differ.
/// Throws `base::Failure` with the HRESULT when the registry refuses.
void KeepRegistered(const ServerRegistration& server);

/// Removes all that `KeepRegistered` writes; what is missing already is no failure.
void Unregister(const ServerRegistration& server);

}  // namespace kitbay::platform::win32
