#include <windows.h>

#include <ole2.h>

#include "platform/win32/com/com_failure.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {

// OLE rather than only COM: the browser control needs it.
ComApartment::ComApartment() { Check(OleInitialize(nullptr)); }

ComApartment::~ComApartment() { OleUninitialize(); }

}  // namespace kitbay::platform::win32
