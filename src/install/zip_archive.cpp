#include "install/zip_archive.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "install/entry_names.h"

namespace kitbay::install {
namespace {

// The most that is read of a name.
constexpr std::size_t kNameLength = 260;

// Marks a size that the directory stores in a zip64 field instead. A library whose long integers
// have 64 bits takes the mark for the size.
constexpr std::uint64_t kSizeIsElsewhere = 0xFFFFFFFF;

}  // namespace

/// The archive's file as the zip library reads it. The library reads its directory byte by byte and
/// jumps from there to an entry and back, so the bytes around both places are kept.
class ZipArchive::Source {
 public:
  explicit Source(std::unique_ptr<platform::FileReader> file) : file_(std::move(file)) {}

  zlib_filefunc64_def Functions() {
    zlib_filefunc64_def functions{};
    functions.opaque = this;
    functions.zopen64_file = [](voidpf source, const void* /*path*/, int /*mode*/) {
      return source;
    };
    functions.zread_file = [](voidpf source, voidpf /*stream*/, void* bytes, uLong length) {
      return static_cast<Source*>(source)->Read(static_cast<char*>(bytes), length);
    };
    functions.ztell64_file = [](voidpf source, voidpf /*stream*/) {
      return ZPOS64_T{static_cast<Source*>(source)->place_};
    };
    functions.zseek64_file = [](voidpf source, voidpf /*stream*/, ZPOS64_T offset, int origin) {
      return static_cast<Source*>(source)->Seek(offset, origin);
    };
    functions.zclose_file = [](voidpf /*source*/, voidpf /*stream*/) { return 0; };
    functions.zerror_file = [](voidpf source, voidpf /*stream*/) {
      return static_cast<Source*>(source)->came_short_ ? 1 : 0;
    };
    return functions;
  }

  /// Throws the failure of reading the file, if there was one.
  void DemandReadable() const {
    if (failure_) {
      std::rethrow_exception(failure_);
    }
  }

 private:
  static constexpr std::size_t kWindowSize = 65536;

  struct Window {
    std::uint64_t start = 0;
    std::size_t length = 0;
    std::uint64_t last_use = 0;
    std::vector<char> bytes = std::vector<char>(kWindowSize);

    bool Holds(std::uint64_t place) const { return place >= start && place - start < length; }
  };

  // No exception may pass through the library. It is kept, and nothing more is read.
  uLong Read(char* bytes, uLong length) noexcept {
    uLong done = 0;
    try {
      while (done < length && !failure_) {
        const Window& window = WindowAt(place_);
        if (!window.Holds(place_)) {
          break;
        }
        const auto from = static_cast<std::size_t>(place_ - window.start);
        const std::size_t part = std::min<std::size_t>(window.length - from, length - done);
        std::memcpy(bytes + done, window.bytes.data() + from, part);
        done += static_cast<uLong>(part);
        place_ += part;
      }
    } catch (...) {
      failure_ = std::current_exception();
    }
    came_short_ = done < length;
    return done;
  }

  Window& WindowAt(std::uint64_t place) {
    Window& recent = windows_[0].last_use > windows_[1].last_use ? windows_[0] : windows_[1];
    Window& other = &recent == &windows_[0] ? windows_[1] : windows_[0];
    if (recent.Holds(place)) {
      return recent;
    }
    other.last_use = recent.last_use + 1;
    if (!other.Holds(place)) {
      other.length = 0;
      other.start = place - place % kWindowSize;
      other.length = file_->ReadAt(other.start, other.bytes.data(), other.bytes.size());
    }
    return other;
  }

  long Seek(std::uint64_t offset, int origin) {
    if (origin == ZLIB_FILEFUNC_SEEK_CUR) {
      offset += place_;
    } else if (origin == ZLIB_FILEFUNC_SEEK_END) {
      offset += file_->Size();
    }
    place_ = offset;
    return 0;
  }

  std::unique_ptr<platform::FileReader> file_;
  std::uint64_t place_ = 0;
  // Also true at the end of the file, where the library would read zero bytes: a directory that is
  // cut short is not one.
  bool came_short_ = false;
  std::exception_ptr failure_;
  std::array<Window, 2> windows_;
};

ZipArchive::ZipArchive(const platform::Files& files, const std::string& path) {
  try {
    source_ = std::make_unique<Source>(files.Open(path));
  } catch (const base::Failure&) {
    return;
  }
  zlib_filefunc64_def functions = source_->Functions();
  zip_ = unzOpen2_64(path.c_str(), &functions);
}

ZipArchive::~ZipArchive() {
  if (zip_ != nullptr) {
    unzClose(zip_);
  }
}

bool ZipArchive::GoToFirst() {
  const int result = unzGoToFirstFile(zip_);
  source_->DemandReadable();
  return result == UNZ_OK;
}

bool ZipArchive::GoToNext() {
  const int result = unzGoToNextFile(zip_);
  source_->DemandReadable();
  return result == UNZ_OK;
}

ZipEntry ZipArchive::Entry() const {
  std::string name(kNameLength, ' ');
  unz_file_info64 info{};
  unzGetCurrentFileInfo64(zip_, &info, name.data(), kNameLength, nullptr, 0, nullptr, 0);
  source_->DemandReadable();
  const std::size_t end = name.find('\0');
  if (end == std::string::npos) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall, Printable(name));
  }
  name.resize(end);
  std::replace(name.begin(), name.end(), '/', '\\');
  return {.name = std::move(name),
          .size = info.uncompressed_size,
          .method = static_cast<std::uint32_t>(info.compression_method),
          .has_unread_sizes = info.uncompressed_size == kSizeIsElsewhere ||
                              info.compressed_size == kSizeIsElsewhere};
}

void ZipArchive::Read(std::span<char> bytes) {
  std::size_t filled = 0;
  if (unzOpenCurrentFile(zip_) == UNZ_OK) {
    // The result is a count or an error; the bytes before an error count as well.
    unzReadCurrentFile(zip_, bytes.data(), static_cast<unsigned>(bytes.size()));
    filled = static_cast<std::size_t>(std::min<ZPOS64_T>(unztell64(zip_), bytes.size()));
  }
  source_->DemandReadable();
  std::ranges::fill(bytes.subspan(filled), '\0');
}

void ZipArchive::CloseEntry() { unzCloseCurrentFile(zip_); }

}  // namespace kitbay::install
