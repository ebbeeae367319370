#include "platform/win32/com/class_registration.h"

#include <objbase.h>

#include <array>
#include <optional>

#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/own_type_library.h"
#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";

/// Marshals dual interfaces between processes by their type library.
constexpr wchar_t kAutomationMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";

constexpr const wchar_t* kPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";

std::wstring TextOfGuid(REFGUID guid) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

void CheckRegistry(LSTATUS status) {
  if (status != ERROR_SUCCESS) {
    throw FailureOf(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
  }
}

std::optional<std::wstring> ReadText(HKEY hive, const std::wstring& key, const wchar_t* name) {
  const std::wstring path = kClasses + key;
  DWORD size = 0;
  if (RegGetValueW(hive, path.c_str(), name, RRF_RT_REG_SZ, nullptr, nullptr, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
  size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegGetValueW(hive, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  text.resize(wcslen(text.c_str()));
  return text;
}

void KeepText(HKEY hive, const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  if (ReadText(hive, key, name) == text) {
    return;
  }
  UniqueRegistryKey opened;
  CheckRegistry(RegCreateKeyExW(hive, (kClasses + key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                nullptr, opened.put(), nullptr));
  CheckRegistry(RegSetValueExW(opened.get(), name, 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(text.c_str()),
                               static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

void KeepClass(const ServerRegistration& server, const ServerRegistration::Class& entry,
               const TypeLibraryFacts& library) {
  const std::wstring id = TextOfGuid(entry.id);
  KeepText(server.hive, entry.prog_id, nullptr, entry.prog_id);
  KeepText(server.hive, entry.prog_id + L"\\CLSID", nullptr, id);

  const std::wstring key = L"CLSID\\" + id;
  KeepText(server.hive, key, nullptr, entry.prog_id);
  KeepText(server.hive, key + L"\\ProgID", nullptr, entry.prog_id);
  KeepText(server.hive, key + L"\\TypeLib", nullptr, TextOfGuid(library.id));
  KeepText(server.hive, key + L"\\Version", nullptr, library.version);
  if (server.kind == ServerRegistration::Kind::kLocalServer) {
    // Quoted, so that a folder name with blanks is not taken for a program and its arguments.
    KeepText(server.hive, key + L"\\LocalServer32", nullptr, L"\"" + OwnModulePath() + L"\"");
  } else {
    KeepText(server.hive, key + L"\\InprocServer32", nullptr, OwnModulePath());
    KeepText(server.hive, key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  }
}

void KeepTypeLibrary(const ServerRegistration& server, const TypeLibraryFacts& library) {
  const std::wstring path = OwnModulePath();
  const std::wstring key = L"TypeLib\\" + TextOfGuid(library.id) + L"\\" + library.version;
  KeepText(server.hive, key, nullptr, library.name);
  KeepText(server.hive, key + L"\\0\\" + kPlatform, nullptr, path);
  KeepText(server.hive, key + L"\\FLAGS", nullptr, L"0");
  KeepText(server.hive, key + L"\\HELPDIR", nullptr, path.substr(0, path.find_last_of(L'\\')));
}

void KeepInterface(const ServerRegistration& server, const TypeLibraryFacts::Interface& entry,
                   const TypeLibraryFacts& library) {
  const std::wstring key = L"Interface\\" + TextOfGuid(entry.id);
  KeepText(server.hive, key, nullptr, entry.name);
  KeepText(server.hive, key + L"\\ProxyStubClsid32", nullptr, kAutomationMarshaler);
  KeepText(server.hive, key + L"\\TypeLib", nullptr, TextOfGuid(library.id));
  KeepText(server.hive, key + L"\\TypeLib", L"Version", library.version);
}

void RemoveTree(HKEY hive, const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(hive, (kClasses + key).c_str());
  if (status != ERROR_FILE_NOT_FOUND) {
    CheckRegistry(status);
  }
}

}  // namespace

void KeepRegistered(const ServerRegistration& server) {
  const TypeLibraryFacts library = OwnTypeLibraryFacts();
  for (const auto& entry : server.classes) {
    KeepClass(server, entry, library);
  }
  KeepTypeLibrary(server, library);
  for (const auto& entry : library.dual_interfaces) {
    KeepInterface(server, entry, library);
  }
}

void Unregister(const ServerRegistration& server) {
  const TypeLibraryFacts library = OwnTypeLibraryFacts();
  for (const auto& entry : server.classes) {
    RemoveTree(server.hive, entry.prog_id);
    RemoveTree(server.hive, L"CLSID\\" + TextOfGuid(entry.id));
  }
  for (const auto& entry : library.dual_interfaces) {
    RemoveTree(server.hive, L"Interface\\" + TextOfGuid(entry.id));
  }
  RemoveTree(server.hive, L"TypeLib\\" + TextOfGuid(library.id));
}

}  // namespace kitbay::platform::win32
