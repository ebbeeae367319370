#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace kitbay::platform::win32 {

/// The full path of the module (executable or library) that this code is linked into.
std::wstring OwnModulePath();

/// What registering a type library needs to know of it.
struct TypeLibraryFacts {
  struct Interface {
    GUID id;
    std::wstring name;
  };

  GUID id;
  std::wstring name;
  std::wstring version;  ///< major and minor number with a point between, as the registry has it
  std::vector<Interface> dual_interfaces;
};

/// The type library that this module carries as its resource 1, whether registered or not. Both
/// throw `base::Failure` with the HRESULT when the module carries none, or not that interface.
TypeLibraryFacts OwnTypeLibraryFacts();
Microsoft::WRL::ComPtr<ITypeInfo> LoadOwnTypeInfo(REFIID iid);

}  // namespace kitbay::platform::win32
