#pragma once

#include <windows.h>

#include <winhttp.h>

#include "platform/win32/system/handles.h"

namespace ovalink {

struct InternetTraits {
  using Type = HINTERNET;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { WinHttpCloseHandle(handle); }
};
using UniqueInternet = kitbay::platform::win32::UniqueHandle<InternetTraits>;

/// A session for asynchronous requests through the user's proxy, or without a proxy if `direct`.
/// Its secure connections use TLS 1.2 or later. Throws `TransferFailure`.
UniqueInternet OpenSession(bool direct);

/// Sets a numeric option. Throws `TransferFailure`.
void SetNumber(HINTERNET handle, DWORD option, DWORD value);

}  // namespace ovalink
