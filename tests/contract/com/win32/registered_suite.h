#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {

/// Calls an export of the suite's library that has no parameters and returns an HRESULT.
inline HRESULT CallSuite(const char* name) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"OvalinkSuite.dll"), name);
  if (address == nullptr) {
    return E_NOTIMPL;
  }
  return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(address))();
}

/// The folder of the suite's library, with its side-by-side manifest.
inline std::string SuiteFolder() {
  wchar_t path[1024] = L"";
  GetModuleFileNameW(GetModuleHandleW(L"OvalinkSuite.dll"), path, 1024);
  const std::string library = platform::win32::ToUtf8(path);
  return library.substr(0, library.rfind('\\'));
}

/// The suite's classes are not registered as long as this object lives.
class UnregisteredSuite {
 public:
  UnregisteredSuite() { EXPECT_EQ(CallSuite("DllUnregisterServer"), S_OK); }
  ~UnregisteredSuite() { EXPECT_EQ(CallSuite("DllRegisterServer"), S_OK); }
  UnregisteredSuite(const UnregisteredSuite&) = delete;
  UnregisteredSuite& operator=(const UnregisteredSuite&) = delete;
};

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
