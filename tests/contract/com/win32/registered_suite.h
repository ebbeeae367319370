#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_path.h"

namespace kitbay::contract {

/// Calls an export of the suite's library that takes nothing and returns an HRESULT.
inline HRESULT CallSuite(const char* name) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"OvalinkSuite.dll"), name);
  if (address == nullptr) return E_NOTIMPL;
  return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(address))();
}

/// The suite's library at `path`, loaded and registered by itself.
class RegisteredSuite {
 public:
  explicit RegisteredSuite(const std::string& path)
      : library_(LoadLibraryW(platform::win32::ToSystemPath(path).c_str())) {
    if (!library_ || FAILED(CallSuite("DllRegisterServer"))) {
      throw std::runtime_error("the suite's library does not register itself");
    }
  }

 private:
  platform::win32::UniqueModule library_;
};

}  // namespace kitbay::contract
