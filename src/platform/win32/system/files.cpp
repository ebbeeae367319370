#include <windows.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "platform/files.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/replacement_file.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

LocalTime ToLocalTime(const FILETIME& time) {
  SYSTEMTIME utc{};
  SYSTEMTIME local{};
  if (!FileTimeToSystemTime(&time, &utc) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError);
  }
  return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

class Win32Files : public Files {
 public:
  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  void Write(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;
  void CreateFolder(const std::string& path) override;
  LocalTime LastModified(const std::string& path) const override;
};

bool Win32Files::Exists(const std::string& path) const {
  std::wstring system_path;
  try {
    system_path = ToSystemPath(path);
  } catch (const base::Failure&) {
    return false;
  }
  WIN32_FIND_DATAW found{};
  if (UniqueFind(FindFirstFileW(system_path.c_str(), &found))) {
    return true;
  }
  // A root is in no listing.
  return GetFileAttributesW(system_path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string Win32Files::Read(const std::string& path) const {
  const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  const DWORD open_error = GetLastError();
  if (!file) {
    throw FileFailure(open_error);
  }
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file.get(), &size)) {
    throw FileFailure(GetLastError());
  }
  std::string bytes;
  if (static_cast<std::uint64_t>(size.QuadPart) >= bytes.max_size()) {
    throw base::Failure(base::RuntimeError::kOutOfMemory);
  }
  bytes.resize(static_cast<std::size_t>(size.QuadPart));
  std::size_t done = 0;
  while (done < bytes.size()) {
    constexpr std::size_t kMostAtOnce = std::numeric_limits<DWORD>::max();
    const auto wanted = static_cast<DWORD>(std::min(bytes.size() - done, kMostAtOnce));
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data() + done, wanted, &read, nullptr)) {
      throw FileFailure(GetLastError());
    }
    if (read == 0) {
      break;
    }
    done += read;
  }
  bytes.resize(done);
  return bytes;
}

void Win32Files::Write(const std::string& path, std::string_view bytes) {
  const std::wstring system_path = ToSystemPath(path);
  const DWORD attributes = DemandOverwritable(system_path);
  const UniqueFile file(CreateFileW(system_path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, attributes, nullptr));
  const DWORD error = GetLastError();
  if (!file) {
    throw FileFailure(error);
  }
  WriteAll(file.get(), bytes);
}

void Win32Files::Replace(const std::string& path, std::string_view bytes) {
  const std::wstring target = ToSystemPath(path);
  ReplacementFile replacement(target);
  replacement.Append(bytes);
  replacement.PutInPlace();
}

void Win32Files::CreateFolder(const std::string& path) {
  if (!CreateDirectoryW(ToSystemPath(path).c_str(), nullptr)) {
    throw FileFailure(GetLastError());
  }
}

LocalTime Win32Files::LastModified(const std::string& path) const {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(ToSystemPath(path).c_str(), GetFileExInfoStandard, &data)) {
    throw FileFailure(GetLastError());
  }
  return ToLocalTime(data.ftLastWriteTime);
}

}  // namespace

std::unique_ptr<Files> MakeFiles() { return std::make_unique<Win32Files>(); }

}  // namespace kitbay::platform::win32
