#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>

namespace kitbay::platform::win32 {

/// The full path of the module (executable or library) that this code is linked into.
std::wstring OwnModulePath();

/// The description of interface `iid` out of the type library that this module carries as its
/// resource 1. It needs no registration. Throws `base::Failure` with the HRESULT.
Microsoft::WRL::ComPtr<ITypeInfo> LoadOwnTypeInfo(REFIID iid);

}  // namespace kitbay::platform::win32
