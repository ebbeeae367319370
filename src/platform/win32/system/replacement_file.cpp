#include "platform/win32/system/replacement_file.h"

#include <cstddef>
#include <string_view>
#include <utility>

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
  // The file keeps what it was marked with, such as hidden.
  const DWORD attributes = DemandOverwritable(target_);
  for (int number = 1; !file_; ++number) {
    path_ = TemporaryName(target_, number);
    file_.reset(
        CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
    const DWORD error = GetLastError();
    if (!file_ && (error != ERROR_FILE_EXISTS || number == kMostNames)) {
      throw FileFailure(error);
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
  // Renamed through this handle, the target would be closed to its readers until the handle is.
  file_.reset();
  // One rename over the target: unlike ReplaceFile it leaves no moment without a file of that name.
  if (!MoveFileExW(path_.c_str(), target_.c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    throw FileFailure(GetLastError());
  }
  path_.clear();
}

void DeleteLeftOvers(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const std::wstring pattern = (folder + L"\\").append(kNameStart).append(L"*").append(kNameEnd);
  const UniqueFind listing(FindFirstFileW(pattern.c_str(), &found));
  if (!listing) {
    return;
  }
  do {
    // One that is being written is open for its writer alone and cannot be deleted.
    if (IsTemporaryName(found.cFileName)) {
      DeleteFileW((folder + L"\\" + found.cFileName).c_str());
    }
  } while (FindNextFileW(listing.get(), &found));
}

}  // namespace kitbay::platform::win32
