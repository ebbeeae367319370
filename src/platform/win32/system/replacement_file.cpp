#include "platform/win32/system/replacement_file.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_failure.h"

namespace kitbay::platform::win32 {
namespace {

constexpr int kMostNames = 1000;

constexpr std::wstring_view kNameStart = L"~kb";
constexpr std::wstring_view kNameEnd = L".tmp";

std::wstring TemporaryName(const std::wstring& target, int number) {
  return target.substr(0, target.rfind(L'\\') + 1)
      .append(kNameStart)
      .append(std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number))
      .append(kNameEnd);
}

bool IsNumber(std::wstring_view text) {
  return !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

/// Whether the file exists and either nothing forbids deleting it or only a program that has it
/// open does. When the file is to be replaced, the system reports both as access denied.
bool IsHeld(const std::wstring& path) {
  const UniqueFile file(CreateFileW(path.c_str(), DELETE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
  const DWORD error = GetLastError();
  return file || error == ERROR_SHARING_VIOLATION;
}

/// Renames the file to a left-over's name beside it, and returns that name.
std::wstring SetAside(const std::wstring& path) {
  for (int number = 1;; ++number) {
    std::wstring aside = TemporaryName(path, number);
    if (MoveFileExW(path.c_str(), aside.c_str(), 0)) {
      return aside;
    }
    const DWORD error = GetLastError();
    if ((error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) || number == kMostNames) {
      RaiseFileFailure(error);
    }
  }
}

bool IsTemporaryName(std::wstring_view name) {
  if (!name.starts_with(kNameStart) || !name.ends_with(kNameEnd)) {
    return false;
  }
  name.remove_prefix(kNameStart.size());
  name.remove_suffix(kNameEnd.size());
  const std::size_t dash = name.find(L'-');
  return dash != std::wstring_view::npos && IsNumber(name.substr(0, dash)) &&
         IsNumber(name.substr(dash + 1));
}

}  // namespace

ReplacementFile::ReplacementFile(std::wstring target) : target_(std::move(target)) {
  // The file keeps its attributes, such as hidden.
  const DWORD attributes = DemandOverwritable(target_);
  for (int number = 1; !file_; ++number) {
    path_ = TemporaryName(target_, number);
    file_.reset(
        CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
    const DWORD error = GetLastError();
    if (!file_ && (error != ERROR_FILE_EXISTS || number == kMostNames)) {
      RaiseFileFailure(error);
    }
  }
}

ReplacementFile::~ReplacementFile() {
  file_.reset();
  if (!path_.empty()) {
    DeleteFileW(path_.c_str());
  }
}

void ReplacementFile::Append(std::string_view bytes) { WriteAll(file_.get(), bytes); }

void ReplacementFile::Flush() {
  if (!FlushFileBuffers(file_.get())) {
    throw FileFailure(GetLastError());
  }
}

void ReplacementFile::PutInPlace() {
  // If the file were renamed through this handle, readers could not open the target until it is
  // closed.
  file_.reset();
  // A single rename over the target: unlike ReplaceFile, it leaves no moment without a file of that
  // name.
  if (!MoveFileExW(path_.c_str(), target_.c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    const DWORD error = GetLastError();
    if (error == ERROR_ACCESS_DENIED && IsHeld(target_)) {
      throw FileInUse();
    }
    RaiseFileFailure(error);
  }
  path_.clear();
}

void ReplacementFile::PutInPlaceOfUsed() {
  file_.reset();
  const std::wstring aside = SetAside(target_);
  if (!MoveFileExW(path_.c_str(), target_.c_str(), 0)) {
    const DWORD error = GetLastError();
    MoveFileExW(aside.c_str(), target_.c_str(), 0);
    RaiseFileFailure(error);
  }
  path_.clear();
}

void DeleteLeftOvers(const std::wstring& folder) {
  std::vector<std::wstring> folders = {folder};
  while (!folders.empty()) {
    const std::wstring path = folders.back() + L"\\";
    folders.pop_back();
    WIN32_FIND_DATAW found{};
    const UniqueFind listing(FindFirstFileW((path + L"*").c_str(), &found));
    for (BOOL there = listing ? TRUE : FALSE; there; there = FindNextFileW(listing.get(), &found)) {
      const std::wstring_view name = found.cFileName;
      const DWORD kind =
          found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
      if (kind == FILE_ATTRIBUTE_DIRECTORY && name != L"." && name != L"..") {
        folders.push_back(path + found.cFileName);
      } else if (IsTemporaryName(name)) {
        // A file that is being written is not shared, so it cannot be deleted.
        DeleteFileW((path + found.cFileName).c_str());
      }
    }
  }
}

}  // namespace kitbay::platform::win32
