#include "contract/system/win32/scratch_folder.h"

#include <windows.h>

#include <stdexcept>

#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

using platform::win32::ToUtf16;
using platform::win32::ToUtf8;
using platform::win32::UniqueFind;

void RemoveTree(const std::wstring& folder) {
  WIN32_FIND_DATAW entry{};
  {
    const UniqueFind listing(FindFirstFileW((folder + L"\\*").c_str(), &entry));
    if (!listing) {
      return;
    }
    do {
      const std::wstring name = entry.cFileName;
      const std::wstring path = folder + L"\\" + name;
      if (name == L"." || name == L"..") {
        continue;
      }
      if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        RemoveTree(path);
      } else {
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(path.c_str());
      }
    } while (FindNextFileW(listing.get(), &entry));
  }
  RemoveDirectoryW(folder.c_str());
}

}  // namespace

ScratchFolder::ScratchFolder() {
  wchar_t temp[MAX_PATH + 1] = L"";
  GetTempPathW(MAX_PATH + 1, temp);
  for (int number = 1; path_.empty(); ++number) {
    const std::wstring path = std::wstring(temp) + L"Kitbay.Tests " +
                              std::to_wstring(GetCurrentProcessId()) + L"-" +
                              std::to_wstring(number);
    if (CreateDirectoryW(path.c_str(), nullptr)) {
      path_ = ToUtf8(path);
    } else if (GetLastError() != ERROR_ALREADY_EXISTS) {
      throw std::runtime_error("no folder for temporary files");
    }
  }
}

ScratchFolder::~ScratchFolder() { RemoveTree(L"\\\\?\\" + ToUtf16(path_)); }

}  // namespace kitbay::contract
