#pragma once

#include <windows.h>

#include <unknwn.h>

namespace kitbay::platform::win32 {

/// Whether two references are to one object: they return the same IUnknown. Null is no object.
bool IsSameObject(IUnknown* first, IUnknown* second);

}  // namespace kitbay::platform::win32
