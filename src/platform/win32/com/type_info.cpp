#include "platform/win32/com/type_info.h"

#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

using Microsoft::WRL::ComPtr;

std::wstring OwnModulePath() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&OwnModulePath), &module);
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    const DWORD error = GetLastError();
    if (length == 0) throw FailureOf(HRESULT_FROM_WIN32(error));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

ComPtr<ITypeInfo> LoadOwnTypeInfo(REFIID iid) {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(OwnModulePath().c_str(), REGKIND_NONE, &library));
  ComPtr<ITypeInfo> type;
  Check(library->GetTypeInfoOfGuid(iid, &type));
  return type;
}

}  // namespace kitbay::platform::win32
