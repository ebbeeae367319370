#include <windows.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "platform/files.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/replacement_file.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/system_time.h"
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

FILETIME ToFileTime(const LocalTime& time) {
  const SYSTEMTIME local = ToSystemTime(time);
  SYSTEMTIME utc{};
  FILETIME result{};
  if (!TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc) ||
      !SystemTimeToFileTime(&utc, &result)) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError);
  }
  return result;
}

// How many bytes one call of the system can read or write.
constexpr std::size_t kMostAtOnce = std::numeric_limits<DWORD>::max();

/// Fails as opening a file does if `file` is empty; `error` is what the system reported then.
void DemandOpen(const UniqueFile& file, DWORD error) {
  if (!file) {
    RaiseFileFailure(error);
  }
}

class Win32FileReader : public FileReader {
 public:
  explicit Win32FileReader(UniqueFile file) : file_(std::move(file)) {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file_.get(), &size)) {
      throw FileFailure(GetLastError());
    }
    size_ = static_cast<std::uint64_t>(size.QuadPart);
  }

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const override {
    std::size_t done = 0;
    while (done < length && place + done < size_) {
      OVERLAPPED from{};
      from.Offset = static_cast<DWORD>(place + done);
      from.OffsetHigh = static_cast<DWORD>((place + done) >> 32U);
      const auto wanted = static_cast<DWORD>(std::min(length - done, kMostAtOnce));
      DWORD read = 0;
      if (!ReadFile(file_.get(), bytes + done, wanted, &read, &from)) {
        throw FileFailure(GetLastError());
      }
      if (read == 0) {
        break;
      }
      done += read;
    }
    return done;
  }

 private:
  UniqueFile file_;
  std::uint64_t size_ = 0;
};

class Win32Files : public Files {
 public:
  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  std::unique_ptr<FileReader> Open(const std::string& path) const override;
  void Create(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;
  bool ReplaceUnchanged(const std::string& path, std::string_view before,
                        std::string_view bytes) override;
  void ReplaceInUse(const std::string& path, std::string_view bytes) override;
  void Delete(const std::string& path) override;
  void WaitForOthers(unsigned milliseconds) const override { Sleep(milliseconds); }
  void SweepReplacements(const std::string& folder) override;
  void CreateFolder(const std::string& path) override;
  bool RefusesFiles(const std::string& folder) override;
  bool IsLink(const std::string& path) const override;
  LocalTime LastModified(const std::string& path) const override;
  void Redate(const std::string& path, const LocalTime& time) override;
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
  // A root directory appears in no listing.
  return GetFileAttributesW(system_path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string Win32Files::Read(const std::string& path) const {
  const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  DemandOpen(file, GetLastError());
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

std::unique_ptr<FileReader> Win32Files::Open(const std::string& path) const {
  const std::wstring system_path = ToSystemPath(path);
  const auto open = [&](DWORD sharing) {
    return CreateFileW(system_path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
  };
  UniqueFile file(open(FILE_SHARE_READ));
  DWORD error = GetLastError();
  if (!file && error == ERROR_SHARING_VIOLATION) {
    // Programs that already have it open for writing must be tolerated.
    file.reset(open(kShareAll));
    error = GetLastError();
  }
  DemandOpen(file, error);
  return std::make_unique<Win32FileReader>(std::move(file));
}

void Win32Files::Create(const std::string& path, std::string_view bytes) {
  const std::wstring system_path = ToSystemPath(path);
  DemandOverwritable(system_path);
  const UniqueFile file(CreateFileW(system_path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr));
  DemandOpen(file, GetLastError());
  WriteAll(file.get(), bytes);
}

void Win32Files::Replace(const std::string& path, std::string_view bytes) {
  const std::wstring target = ToSystemPath(path);
  ReplacementFile replacement(target);
  replacement.Append(bytes);
  replacement.Flush();
  replacement.PutInPlace();
}

bool Win32Files::ReplaceUnchanged(const std::string& path, std::string_view before,
                                  std::string_view bytes) {
  const std::wstring target = ToSystemPath(path);
  ReplacementFile replacement(target);
  replacement.Append(bytes);
  replacement.Flush();
  // Checked after the flush, which takes time.
  if (Read(path) != before) {
    return false;
  }
  replacement.PutInPlace();
  return true;
}

void Win32Files::ReplaceInUse(const std::string& path, std::string_view bytes) {
  const std::wstring target = ToSystemPath(path);
  ReplacementFile replacement(target);
  replacement.Append(bytes);
  replacement.PutInPlaceOfUsed();
}

void Win32Files::Delete(const std::string& path) {
  if (!DeleteFileW(ToSystemPath(path).c_str())) {
    RaiseFileFailure(GetLastError());
  }
}

void Win32Files::SweepReplacements(const std::string& folder) {
  std::wstring system_path;
  try {
    system_path = ToSystemPath(folder);
  } catch (const base::Failure&) {
    return;
  }
  DeleteLeftOvers(system_path);
}

void Win32Files::CreateFolder(const std::string& path) {
  if (!CreateDirectoryW(ToSystemPath(path).c_str(), nullptr)) {
    throw FileFailure(GetLastError());
  }
}

bool Win32Files::RefusesFiles(const std::string& folder) {
  try {
    // The file is never moved into place, and is deleted again here.
    const ReplacementFile tried(ToSystemPath(folder + "\\~kb"));
    return false;
  } catch (const base::Failure& failure) {
    return failure.number() == static_cast<std::int32_t>(base::RuntimeError::kPermissionDenied);
  }
}

bool Win32Files::IsLink(const std::string& path) const {
  const std::wstring system_path = ToSystemPath(path);
  const DWORD attributes = GetFileAttributesW(system_path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return false;
  }
  WIN32_FIND_DATAW found{};
  const UniqueFind listing(FindFirstFileW(system_path.c_str(), &found));
  // Some reparse points, such as files kept in the cloud, are not links. Wine does not report the
  // kind of a reparse point.
  return !listing || found.dwReserved0 == 0 || IsReparseTagNameSurrogate(found.dwReserved0);
}

LocalTime Win32Files::LastModified(const std::string& path) const {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(ToSystemPath(path).c_str(), GetFileExInfoStandard, &data)) {
    throw FileFailure(GetLastError());
  }
  return ToLocalTime(data.ftLastWriteTime);
}

void Win32Files::Redate(const std::string& path, const LocalTime& time) {
  const FILETIME written = ToFileTime(time);
  const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), FILE_WRITE_ATTRIBUTES, kShareAll,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  DemandOpen(file, GetLastError());
  if (!SetFileTime(file.get(), nullptr, nullptr, &written)) {
    throw FileFailure(GetLastError());
  }
}

}  // namespace

std::unique_ptr<Files> MakeFiles() { return std::make_unique<Win32Files>(); }

}  // namespace kitbay::platform::win32
