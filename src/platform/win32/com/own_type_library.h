#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// The full path of the module (executable or library) that contains this code.
std::wstring OwnModulePath();

/// What is needed to register a type library.
struct TypeLibraryFacts {
  struct Interface {
    GUID id;
    std::wstring name;
  };

  GUID id;
  std::wstring name;
  std::wstring version;  ///< major and minor number joined by a point, as in the registry
  std::vector<Interface> dual_interfaces;
};

/// The type library in this module's resource 1, whether registered or not. Both throw
/// `base::Failure` with the HRESULT if the module has none, or the library lacks that interface.
TypeLibraryFacts OwnTypeLibraryFacts();
Microsoft::WRL::ComPtr<ITypeInfo> LoadOwnTypeInfo(REFIID iid);

}  // namespace kitbay::platform::win32
