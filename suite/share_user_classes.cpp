// Makes the classes that a user registers for himself known to the whole system where the system
// does not look for them by itself, as Wine does not: HKEY_CURRENT_USER\Software\Classes becomes a
// link to the machine's classes. What it held is kept. Does nothing on other systems.
#include <windows.h>

#include <string>

#include "platform/win32/system/handles.h"

namespace {

using kitbay::platform::win32::UniqueRegistryKey;

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr wchar_t kProbe[] = L"Ovalink.ClassesProbe";
constexpr wchar_t kTarget[] = L"\\Registry\\Machine\\Software\\Classes";

UniqueRegistryKey CreateUserClasses(DWORD options, REGSAM access) {
  UniqueRegistryKey key;
  RegCreateKeyExW(HKEY_CURRENT_USER, kClasses, 0, nullptr, options, access, nullptr, key.put(),
                  nullptr);
  return key;
}

/// Whether a class of the user is seen among all classes.
bool IsUserClassSeen() {
  const UniqueRegistryKey classes = CreateUserClasses(0, KEY_ALL_ACCESS);
  UniqueRegistryKey probe;
  RegCreateKeyExW(classes.get(), kProbe, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, probe.put(),
                  nullptr);
  UniqueRegistryKey seen;
  RegOpenKeyExW(HKEY_CLASSES_ROOT, kProbe, 0, KEY_QUERY_VALUE, seen.put());
  const bool is_seen = static_cast<bool>(seen);
  RegDeleteKeyW(classes.get(), kProbe);
  return is_seen;
}

bool MoveUserClasses() {
  UniqueRegistryKey machine;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kClasses, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                      machine.put(), nullptr) != ERROR_SUCCESS) {
    return false;
  }
  return RegCopyTreeW(HKEY_CURRENT_USER, kClasses, machine.get()) == ERROR_SUCCESS &&
         RegDeleteTreeW(HKEY_CURRENT_USER, kClasses) == ERROR_SUCCESS;
}

bool LinkUserClasses() {
  const UniqueRegistryKey link =
      CreateUserClasses(REG_OPTION_CREATE_LINK, KEY_SET_VALUE | KEY_CREATE_LINK);
  return link && RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK,
                                reinterpret_cast<const BYTE*>(kTarget),
                                sizeof kTarget - sizeof(wchar_t)) == ERROR_SUCCESS;
}

}  // namespace

int main() {
  if (IsUserClassSeen()) return 0;
  return MoveUserClasses() && LinkUserClasses() && IsUserClassSeen() ? 0 : 1;
}
