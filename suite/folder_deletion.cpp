#include "folder_deletion.h"

#include <windows.h>

#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_failure.h"

namespace ovalink {

namespace win32 = kitbay::platform::win32;
using kitbay::base::Failure;
using kitbay::base::RuntimeError;

namespace {

bool Has(DWORD attributes, DWORD flag) { return (attributes & flag) != 0; }

/// Subfolders may lie deeper than the system's usual limit.
std::wstring AnyLength(const std::wstring& path) {
  if (path.starts_with(L"\\\\?\\")) {
    return path;
  }
  return path.starts_with(L"\\\\") ? L"\\\\?\\UNC" + path.substr(1) : L"\\\\?\\" + path;
}

void ClearReadOnly(const std::wstring& path, DWORD attributes) {
  const DWORD left = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  const BOOL cleared = SetFileAttributesW(path.c_str(), left == 0 ? FILE_ATTRIBUTE_NORMAL : left);
  const DWORD error = GetLastError();
  if (!cleared) {
    throw win32::FileFailure(error);
  }
}

void DeleteEntry(const std::wstring& path, DWORD attributes, bool force) {
  if (Has(attributes, FILE_ATTRIBUTE_READONLY)) {
    if (!force) {
      throw Failure(RuntimeError::kPermissionDenied);
    }
    ClearReadOnly(path, attributes);
  }
  const BOOL deleted = Has(attributes, FILE_ATTRIBUTE_DIRECTORY) ? RemoveDirectoryW(path.c_str())
                                                                 : DeleteFileW(path.c_str());
  const DWORD error = GetLastError();
  if (!deleted) {
    throw win32::FileFailure(error);
  }
}

/// A folder whose entries are being deleted.
struct Level {
  std::wstring path;
  DWORD attributes = 0;
  win32::UniqueFind listing;
  WIN32_FIND_DATAW entry{};
  bool has_entry = false;
};

Level OpenLevel(std::wstring path, DWORD attributes) {
  Level level;
  level.path = std::move(path);
  level.attributes = attributes;
  level.listing = win32::UniqueFind(FindFirstFileW((level.path + L"\\*").c_str(), &level.entry));
  const DWORD error = GetLastError();
  if (!level.listing) {
    throw win32::FileFailure(error);
  }
  level.has_entry = true;
  return level;
}

void Advance(Level& level) {
  level.has_entry = FindNextFileW(level.listing.get(), &level.entry) != 0;
  const DWORD error = GetLastError();
  if (!level.has_entry && error != ERROR_NO_MORE_FILES) {
    throw win32::FileFailure(error);
  }
}

}  // namespace

void DeleteFolderTree(const std::wstring& path, bool force) {
  const std::wstring root = AnyLength(path);
  const DWORD attributes = GetFileAttributesW(root.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !Has(attributes, FILE_ATTRIBUTE_DIRECTORY)) {
    throw Failure(RuntimeError::kPathNotFound);
  }
  if (Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT)) {
    return DeleteEntry(root, attributes, force);
  }

  std::vector<Level> levels;
  levels.push_back(OpenLevel(root, attributes));
  while (!levels.empty()) {
    Level& level = levels.back();
    if (!level.has_entry) {
      // The listing keeps the folder open.
      level.listing.reset();
      DeleteEntry(level.path, level.attributes, force);
      levels.pop_back();
      continue;
    }
    const std::wstring name = level.entry.cFileName;
    const DWORD entry_attributes = level.entry.dwFileAttributes;
    Advance(level);
    if (name == L"." || name == L"..") {
      continue;
    }

    std::wstring path = level.path + L"\\" + name;
    if (Has(entry_attributes, FILE_ATTRIBUTE_DIRECTORY) &&
        !Has(entry_attributes, FILE_ATTRIBUTE_REPARSE_POINT)) {
      levels.push_back(OpenLevel(std::move(path), entry_attributes));
    } else {
      DeleteEntry(path, entry_attributes, force);
    }
  }
}

}  // namespace ovalink
