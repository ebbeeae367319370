#include "contract/system/win32/folder_link.h"

#include <windows.h>

#include <filesystem>

#include "contract/windows/patience.h"

namespace kitbay::contract {
namespace {

bool IsReparsePoint(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// Wine creates no links, but shows those of the machine below it, which "ln" creates. That program
// is not a process to Wine, but its effect is visible.
void LinkBelowWine(const std::wstring& path, const std::wstring& target) {
  const std::size_t name = path.rfind(L'\\') + 1;
  const std::wstring folder = path.substr(0, name);
  const std::wstring from_there =
      std::filesystem::path(target).lexically_relative(folder).generic_wstring();
  std::wstring command = L"ln -s \"" + from_there + L"\" \"" + path.substr(name) + L"\"";
  const HANDLE change = FindFirstChangeNotificationW(
      folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_DIR_NAME | FILE_NOTIFY_CHANGE_FILE_NAME);
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION started{};
  // There are no handles to close: newer versions of Wine return the numbers of others here.
  if (CreateProcessW(L"\\\\?\\unix\\bin\\ln", command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                     folder.c_str(), &start, &started)) {
    WaitForSingleObject(change, kPatienceMs);
  }
  FindCloseChangeNotification(change);
}

}  // namespace

bool MakeFolderLink(const std::wstring& path, const std::wstring& target) {
  constexpr DWORD kForEveryUser = 2;  // where the system is in developer mode
  CreateSymbolicLinkW(path.c_str(), target.c_str(), SYMBOLIC_LINK_FLAG_DIRECTORY | kForEveryUser);
  if (!IsReparsePoint(path) &&
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr) {
    LinkBelowWine(path, target);
  }
  return IsReparsePoint(path);
}

}  // namespace kitbay::contract
