#include <utility>

#include "fakes/memory_files.h"

namespace kitbay::fakes {

using base::Failure;
using base::RuntimeError;

/// A text file of the tree, open for reading or for writing. Writes reach the tree immediately.
class MemoryTextStream : public platform::TextStream {
 public:
  MemoryTextStream(MemoryFiles& files, std::string path, bool writes)
      : files_(files), path_(std::move(path)), writes_(writes) {}

  std::string ReadLine() override {
    files_.Record("fso.ReadLine " + path_);
    CheckOpen(false);
    const std::string& bytes = files_.OpenForReading(path_).bytes;
    if (position_ >= bytes.size()) {
      throw Failure(RuntimeError::kInputPastEndOfFile);
    }
    const auto end = bytes.find('\n', position_);
    std::string line = bytes.substr(position_, end - position_);
    position_ = end == std::string::npos ? bytes.size() : end + 1;
    if (end != std::string::npos && line.ends_with('\r')) {
      line.pop_back();
    }
    return line;
  }

  void WriteLine(const std::string& text) override {
    files_.Record("fso.WriteLine " + path_);
    Append(text + "\r\n");
  }

  void Write(const std::string& text) override {
    files_.Record("fso.Write " + path_);
    Append(text);
  }

  void Close() override {
    files_.Record("fso.Close " + path_);
    open_ = false;
  }

 private:
  void CheckOpen(bool for_writing) const {
    if (!open_ || writes_ != for_writing) {
      throw Failure(54, "Bad file mode");
    }
  }

  void Append(const std::string& text) {
    CheckOpen(true);
    files_.CheckWritable(path_);
    files_.Put(path_, files_.Bytes(path_).value_or("") + text);
  }

  MemoryFiles& files_;
  std::string path_;
  bool writes_;
  bool open_ = true;
  std::size_t position_ = 0;
};

bool MemoryFileSystemObject::FileExists(const std::string& path) {
  files_.Record("fso.FileExists " + path);
  return files_.IsFile(path);
}

bool MemoryFileSystemObject::FolderExists(const std::string& path) {
  files_.Record("fso.FolderExists " + path);
  return !path.empty() && files_.IsFolder(path);
}

void MemoryFileSystemObject::CreateFolder(const std::string& path) {
  files_.Record("fso.CreateFolder " + path);
  const WindowsPath parsed = files_.CheckPlace(path);
  if (files_.Find(parsed) != nullptr) {
    throw Failure(RuntimeError::kFileAlreadyExists);
  }
  files_.DemandChangeIn(parsed.Parent());
  files_.MakeFolder(parsed);
}

void MemoryFileSystemObject::DeleteFolder(const std::string& path, bool force) {
  files_.Record("fso.DeleteFolder " + path);
  if (path.empty() || !files_.IsFolder(path)) {
    throw Failure(RuntimeError::kPathNotFound);
  }
  files_.Delete(ParsePath(path), force);
}

std::unique_ptr<platform::TextStream> MemoryFileSystemObject::CreateTextFile(
    const std::string& path, bool overwrite) {
  files_.Record("fso.CreateTextFile " + path);
  if (!overwrite && files_.IsFile(path)) {
    throw Failure(RuntimeError::kFileAlreadyExists);
  }
  files_.CheckWritable(path);
  files_.Put(path, "");
  return std::make_unique<MemoryTextStream>(files_, path, true);
}

std::unique_ptr<platform::TextStream> MemoryFileSystemObject::OpenTextFile(
    const std::string& path) {
  files_.Record("fso.OpenTextFile " + path);
  files_.OpenForReading(path);
  return std::make_unique<MemoryTextStream>(files_, path, false);
}

}  // namespace kitbay::fakes
