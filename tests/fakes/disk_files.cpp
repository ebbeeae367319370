#include "fakes/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include "base/failure.h"

namespace kitbay::fakes {
namespace {

using base::Failure;
using base::RuntimeError;

// For larger pieces, the system's cache looks for contiguous memory, which takes several times as
// long as the copying.
constexpr std::size_t kMostWrittenAtOnce = 65536;

Failure SystemFailure(int error) {
  switch (error) {
    case ENOENT:
      return Failure(RuntimeError::kFileNotFound);
    case ENOTDIR:
      return Failure(RuntimeError::kPathNotFound);
    case EACCES:
    case EPERM:
    case EISDIR:
    case EROFS:
      return Failure(RuntimeError::kPermissionDenied);
    case ENOSPC:
      return Failure(RuntimeError::kDiskFull);
    default:
      return Failure(RuntimeError::kPathFileAccessError);
  }
}

/// A descriptor that is closed when it is destroyed.
class Descriptor {
 public:
  Descriptor(const std::string& place, int flags) : number_(open(place.c_str(), flags, 0666)) {
    if (number_ < 0) {
      throw SystemFailure(errno);
    }
  }
  ~Descriptor() { close(number_); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

class DiskFileReader : public platform::FileReader {
 public:
  explicit DiskFileReader(Descriptor file) : file_(std::move(file)) {
    struct stat info = {};
    if (fstat(file_.number(), &info) != 0 || S_ISDIR(info.st_mode)) {
      throw Failure(RuntimeError::kPermissionDenied);
    }
    size_ = static_cast<std::uint64_t>(info.st_size);
  }

  std::uint64_t Size() const override { return size_; }
  std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const override {
    std::size_t done = 0;
    while (done < length) {
      const ssize_t count =
          pread(file_.number(), bytes + done, length - done, static_cast<off_t>(place + done));
      if (count < 0) {
        throw SystemFailure(errno);
      }
      if (count == 0) {
        break;
      }
      done += static_cast<std::size_t>(count);
    }
    return done;
  }

 private:
  Descriptor file_;
  std::uint64_t size_ = 0;
};

}  // namespace

DiskFiles::DiskFiles(std::string drive) : drive_(std::move(drive)) {}

bool DiskFiles::Exists(const std::string& path) const {
  struct stat info = {};
  return stat(Place(path).c_str(), &info) == 0;
}

std::string DiskFiles::Read(const std::string& path) const {
  const auto reader = Open(path);
  std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
  bytes.resize(reader->ReadAt(0, bytes.data(), bytes.size()));
  return bytes;
}

std::unique_ptr<platform::FileReader> DiskFiles::Open(const std::string& path) const {
  return std::make_unique<DiskFileReader>(Descriptor(Place(path), O_RDONLY));
}

void DiskFiles::Create(const std::string& path, std::string_view bytes) {
  const Descriptor file(Place(path), O_RDWR | O_CREAT | O_TRUNC);
  while (!bytes.empty()) {
    const ssize_t count =
        write(file.number(), bytes.data(), std::min(bytes.size(), kMostWrittenAtOnce));
    if (count < 0) {
      throw SystemFailure(errno);
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void DiskFiles::Replace(const std::string& path, std::string_view bytes) {
  const std::string temporary = path + ".new";
  Create(temporary, bytes);
  if (rename(Place(temporary).c_str(), Place(path).c_str()) != 0) {
    throw SystemFailure(errno);
  }
}

bool DiskFiles::ReplaceUnchanged(const std::string& path, std::string_view before,
                                 std::string_view bytes) {
  if (Read(path) != before) {
    return false;
  }
  Replace(path, bytes);
  return true;
}

void DiskFiles::Delete(const std::string& path) {
  if (unlink(Place(path).c_str()) != 0) {
    throw SystemFailure(errno);
  }
}

void DiskFiles::CreateFolder(const std::string& path) {
  if (mkdir(Place(path).c_str(), 0777) != 0) {
    throw errno == ENOENT ? Failure(RuntimeError::kPathNotFound) : SystemFailure(errno);
  }
}

bool DiskFiles::IsLink(const std::string& path) const {
  struct stat info = {};
  return lstat(Place(path).c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

platform::LocalTime DiskFiles::LastModified(const std::string& path) const {
  struct stat info = {};
  if (stat(Place(path).c_str(), &info) != 0) {
    throw SystemFailure(errno);
  }
  std::tm local{};
  localtime_r(&info.st_mtime, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

void DiskFiles::Redate(const std::string& path, const platform::LocalTime& time) {
  std::tm local{};
  local.tm_year = time.year - 1900;
  local.tm_mon = time.month - 1;
  local.tm_mday = time.day;
  local.tm_hour = time.hour;
  local.tm_min = time.minute;
  local.tm_sec = time.second;
  local.tm_isdst = -1;
  const timespec written{std::mktime(&local), 0};
  const std::array<timespec, 2> times{written, written};
  if (utimensat(AT_FDCWD, Place(path).c_str(), times.data(), 0) != 0) {
    throw SystemFailure(errno);
  }
}

std::string DiskFiles::Place(const std::string& path) const {
  std::string place = drive_ + path.substr(path.starts_with("C:") ? 2 : 0);
  std::replace(place.begin() + static_cast<std::ptrdiff_t>(drive_.size()), place.end(), '\\', '/');
  return place;
}

}  // namespace kitbay::fakes
