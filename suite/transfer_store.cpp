#include "transfer_store.h"

#include <shlobj.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace ovalink {
namespace {

namespace win32 = kitbay::platform::win32;

constexpr std::uint64_t kTicksPerDay = std::uint64_t{24} * 60 * 60 * 10'000'000;
constexpr std::uint64_t kKeptForDays = 30;

std::uint64_t Ticks(const FILETIME& time) {
  return (std::uint64_t{time.dwHighDateTime} << 32U) | time.dwLowDateTime;
}

std::uint64_t Now() {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return Ticks(now);
}

std::uint64_t LengthOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
    return 0;
  }
  return (std::uint64_t{data.nFileSizeHigh} << 32U) | data.nFileSizeLow;
}

void DeleteOld(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const win32::UniqueFind listing(FindFirstFileW((folder + L"*").c_str(), &found));
  for (BOOL there = listing ? TRUE : FALSE; there; there = FindNextFileW(listing.get(), &found)) {
    const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!is_folder && Ticks(found.ftLastWriteTime) + kKeptForDays * kTicksPerDay < Now()) {
      DeleteFileW((folder + found.cFileName).c_str());
    }
  }
}

/// The folder, with "\" at its end; "" if there can be none.
std::wstring Folder() {
  std::array<wchar_t, MAX_PATH> local{};
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT,
                              local.data()))) {
    return {};
  }
  std::wstring folder = local.data();
  for (const wchar_t* part : {L"\\Ovalink", L"\\Transfers"}) {
    folder += part;
    CreateDirectoryW(folder.c_str(), nullptr);
  }
  return folder + L"\\";
}

/// The checksum of the file's bytes; 0 if it cannot be read.
std::uint64_t SumOfFile(const std::wstring& path) {
  try {
    return SumOf(win32::MakeFiles()->Read(win32::ToUtf8(path)));
  } catch (const kitbay::base::Failure&) {
    return 0;
  }
}

}  // namespace

TransferStore::TransferStore(const DownloadRequest& request, std::wstring destination)
    : destination_(std::move(destination)) {
  record_.source = request.server + request.file_path;
  record_.destination = request.destination;
  const std::wstring folder = Folder();
  if (folder.empty()) {
    return;
  }
  DeleteOld(folder);
  // Two destinations may share a name without harm: the record tells them apart.
  base_ = folder + std::to_wstring(SumOf(kitbay::base::ToLower(request.destination)));
  Load();
}

void TransferStore::Load() {
  std::optional<TransferRecord> kept;
  try {
    kept = ReadRecord(win32::MakeFiles()->Read(win32::ToUtf8(RecordPath())));
  } catch (const kitbay::base::Failure&) {
    return;  // There is none.
  }
  if (!kept || kept->source != record_.source || kept->destination != record_.destination) {
    return;
  }
  record_ = *kept;
  if (record_.sum != 0) {
    asks_whether_changed_ = SumOfFile(destination_) == record_.sum;
  } else if (IsStrong(record_.etag) && record_.length > 1) {
    // At least one byte is requested: a request for none has no answer.
    first_ = std::min(LengthOf(BytesPath()), record_.length - 1);
  }
}

std::string TransferStore::Fields() const {
  if (first_ > 0) {
    return RestFields(record_, first_);
  }
  return asks_whether_changed_ ? UnlessChangedFields(record_) : std::string();
}

bool TransferStore::IsRest(const ContentRange& range) const {
  return ovalink::IsRest(range, record_, first_);
}

void TransferStore::Discard() {
  first_ = 0;
  asks_whether_changed_ = false;
  bytes_.reset();
  if (base_.empty()) {
    return;
  }
  DeleteFileW(BytesPath().c_str());
  DeleteFileW(RecordPath().c_str());
}

bool TransferStore::KeepBytes(const TransferRecord& record) {
  record_.etag = record.etag;
  record_.last_modified = record.last_modified;
  record_.length = record.length;
  record_.sum = 0;
  Discard();
  // The record is written before the first byte that it describes.
  return !base_.empty() && WriteRecord() && OpenBytes(CREATE_ALWAYS);
}

bool TransferStore::KeepRest() {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(first_);
  return OpenBytes(OPEN_EXISTING) && SetFilePointerEx(bytes_.get(), end, nullptr, FILE_BEGIN) &&
         SetEndOfFile(bytes_.get());
}

bool TransferStore::OpenBytes(DWORD disposition) {
  bytes_.reset(CreateFileW(BytesPath().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                           disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
  return static_cast<bool>(bytes_);
}

void TransferStore::Append(std::string_view bytes) { win32::WriteAll(bytes_.get(), bytes); }

void TransferStore::CopyTo(win32::ReplacementFile& file) {
  constexpr DWORD kAtOnce = 64 * 1024;
  const auto buffer = std::make_unique<char[]>(kAtOnce);
  SetFilePointer(bytes_.get(), 0, nullptr, FILE_BEGIN);
  for (;;) {
    DWORD read = 0;
    if (!ReadFile(bytes_.get(), buffer.get(), kAtOnce, &read, nullptr)) {
      throw win32::FileFailure(GetLastError());
    }
    if (read == 0) {
      return;
    }
    file.Append({buffer.get(), read});
  }
}

void TransferStore::Settle(const TransferRecord& record) {
  Discard();
  record_.etag = record.etag;
  record_.last_modified = record.last_modified;
  if (base_.empty() || UnlessChangedFields(record_).empty()) {
    return;
  }
  record_.sum = SumOfFile(destination_);
  WriteRecord();
}

void TransferStore::Refresh() const {
  const win32::UniqueFile file(CreateFileW(destination_.c_str(), FILE_WRITE_ATTRIBUTES,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                           nullptr, OPEN_EXISTING, 0, nullptr));
  const DWORD error = GetLastError();
  if (!file) {
    throw win32::FileFailure(error);
  }
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  if (!SetFileTime(file.get(), nullptr, nullptr, &now)) {
    throw win32::FileFailure(GetLastError());
  }
}

bool TransferStore::WriteRecord() const {
  try {
    win32::MakeFiles()->Replace(win32::ToUtf8(RecordPath()), RecordText(record_));
    return true;
  } catch (const kitbay::base::Failure&) {
    return false;
  }
}

}  // namespace ovalink
