#include "platform/win32/system/replacement_file.h"

#include <utility>

#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_failure.h"

namespace kitbay::platform::win32 {
namespace {

constexpr int kMostNames = 1000;

std::wstring TemporaryName(const std::wstring& target, int number) {
  return target.substr(0, target.rfind(L'\\') + 1) + L"~kb" +
         std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number) + L".tmp";
}

}  // namespace

ReplacementFile::ReplacementFile(std::wstring target) : target_(std::move(target)) {
  // The file keeps what it was marked with, such as hidden.
  const DWORD attributes = DemandOverwritable(target_);
  for (int number = 1; !file_; ++number) {
    path_ = TemporaryName(target_, number);
    file_.reset(CreateFileW(path_.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                            attributes, nullptr));
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

void ReplacementFile::PutInPlace() {
  if (!FlushFileBuffers(file_.get())) {
    throw FileFailure(GetLastError());
  }
  file_.reset();
  // One rename over the target: unlike ReplaceFile it leaves no moment without a file of that name.
  if (!MoveFileExW(path_.c_str(), target_.c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    throw FileFailure(GetLastError());
  }
  path_.clear();
}

}  // namespace kitbay::platform::win32
