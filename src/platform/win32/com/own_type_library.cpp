#include "platform/win32/com/own_type_library.h"

#include <array>
#include <cwchar>
#include <memory>

#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

ComPtr<ITypeLib> LoadOwnTypeLibrary() {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(OwnModulePath().c_str(), REGKIND_NONE, &library));
  return library;
}

/// The name of a type by its index, or of the library (-1); with `want_text`, its help text.
std::wstring NameOf(ITypeLib& library, INT index, bool want_text) {
  BSTR found = nullptr;
  Check(library.GetDocumentation(index, want_text ? nullptr : &found, want_text ? &found : nullptr,
                                 nullptr, nullptr));
  const std::wstring name = found == nullptr ? std::wstring() : std::wstring(found);
  SysFreeString(found);
  return name;
}

std::wstring VersionText(WORD major, WORD minor) {
  // Both numbers are hexadecimal in the registry.
  std::array<wchar_t, 16> text{};
  swprintf(text.data(), text.size(), L"%x.%x", major, minor);
  return text.data();
}

}  // namespace

std::wstring OwnModulePath() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&OwnModulePath), &module);
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    const DWORD error = GetLastError();
    if (length == 0) {
      throw FailureOf(HRESULT_FROM_WIN32(error));
    }
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

TypeLibraryFacts OwnTypeLibraryFacts() {
  const ComPtr<ITypeLib> library = LoadOwnTypeLibrary();
  TLIBATTR* raw_attributes = nullptr;
  Check(library->GetLibAttr(&raw_attributes));
  const auto release = [&library](TLIBATTR* attributes) { library->ReleaseTLibAttr(attributes); };
  const std::unique_ptr<TLIBATTR, decltype(release)> attributes(raw_attributes, release);

  TypeLibraryFacts facts{.id = attributes->guid,
                         .name = NameOf(*library.Get(), -1, true),
                         .version = VersionText(attributes->wMajorVerNum, attributes->wMinorVerNum),
                         .dual_interfaces = {}};
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    ComPtr<ITypeInfo> type;
    Check(library->GetTypeInfo(index, &type));
    TYPEATTR* type_attributes = nullptr;
    Check(type->GetTypeAttr(&type_attributes));
    const bool is_dual = (type_attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    const GUID id = type_attributes->guid;
    type->ReleaseTypeAttr(type_attributes);
    if (is_dual) {
      facts.dual_interfaces.push_back({id, NameOf(*library.Get(), static_cast<INT>(index), false)});
    }
  }
  return facts;
}

ComPtr<ITypeInfo> LoadOwnTypeInfo(REFIID iid) {
  ComPtr<ITypeInfo> type;
  Check(LoadOwnTypeLibrary()->GetTypeInfoOfGuid(iid, &type));
  return type;
}

}  // namespace kitbay::platform::win32
