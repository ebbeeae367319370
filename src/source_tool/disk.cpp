#include "source_tool/disk.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/text.h"

namespace kitbay::source_tool {
namespace {

using base::Failure;
using base::RuntimeError;

std::filesystem::path PathOf(const std::string& path) {
  return {std::u8string(path.begin(), path.end())};
}

[[noreturn]] void Refuse(const std::string& path) {
  throw Failure(RuntimeError::kPermissionDenied, path);
}

std::ifstream OpenToRead(const std::string& path) {
  std::ifstream file(PathOf(path), std::ios::binary);
  if (!file || !std::filesystem::is_regular_file(PathOf(path))) {
    throw Failure(RuntimeError::kFileNotFound, path);
  }
  return file;
}

class Reader : public platform::FileReader {
 public:
  explicit Reader(const std::string& path)
      : file_(OpenToRead(path)), size_(std::filesystem::file_size(PathOf(path))) {}

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t place, char* bytes, std::size_t length) const override {
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(place));
    file_.read(bytes, static_cast<std::streamsize>(length));
    return static_cast<std::size_t>(file_.gcount());
  }

 private:
  mutable std::ifstream file_;
  std::uint64_t size_;
};

}  // namespace

std::string FileNameOf(const std::string& path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

void Disk::Place(const std::string& place, const std::string& path) {
  placed_[base::ToLower(place)] = path;
}

const std::string& Disk::Real(const std::string& path) const {
  const auto found = placed_.find(base::ToLower(path));
  return found == placed_.end() ? path : found->second;
}

bool Disk::Exists(const std::string& path) const {
  std::error_code ignored;
  return std::filesystem::exists(PathOf(Real(path)), ignored);
}

std::string Disk::Read(const std::string& path) const {
  std::ifstream file = OpenToRead(Real(path));
  return {std::istreambuf_iterator<char>(file), {}};
}

std::unique_ptr<platform::FileReader> Disk::Open(const std::string& path) const {
  return std::make_unique<Reader>(Real(path));
}

void Disk::Replace(const std::string& path, std::string_view bytes) {
  const std::filesystem::path target = PathOf(Real(path));
  std::filesystem::path beside = target;
  beside += ".new";
  std::ofstream file(beside, std::ios::binary);
  file << bytes;
  file.close();
  std::error_code error;
  if (file) {
    std::filesystem::rename(beside, target, error);
  }
  if (!file || error) {
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    throw Failure(RuntimeError::kPathFileAccessError, path);
  }
}

void Disk::Create(const std::string& path, std::string_view bytes) {
  std::ofstream file(PathOf(Real(path)), std::ios::binary);
  file << bytes;
  file.close();
  if (!file) {
    throw Failure(RuntimeError::kPathFileAccessError, path);
  }
}

bool Disk::ReplaceUnchanged(const std::string& path, std::string_view /*before*/,
                            std::string_view /*bytes*/) {
  Refuse(path);
}

void Disk::ReplaceInUse(const std::string& path, std::string_view /*bytes*/) { Refuse(path); }

void Disk::Delete(const std::string& path) { Refuse(path); }

void Disk::WaitForOthers(unsigned /*milliseconds*/) const {}

void Disk::SweepReplacements(const std::string& folder) { Refuse(folder); }

void Disk::CreateFolder(const std::string& path) { Refuse(path); }

bool Disk::RefusesFiles(const std::string& /*folder*/) { return true; }

bool Disk::IsLink(const std::string& /*path*/) const { return false; }

platform::LocalTime Disk::LastModified(const std::string& path) const { Refuse(path); }

void Disk::Redate(const std::string& path, const platform::LocalTime& /*time*/) { Refuse(path); }

}  // namespace kitbay::source_tool
