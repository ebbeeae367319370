// A package: nothing in it is written outside its folder, and a refused package leaves nothing
// behind. An input is an archive or, unless it begins like one, the description of one: alternating
// lines of names and of bytes.
#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "fakes/memory_files.h"
#include "fakes/zip_bytes.h"
#include "fuzz_support.h"
#include "install/package_expansion.h"
#include "install/zip_archive.h"

namespace kitbay::fuzz {
namespace {

constexpr const char* kArchive = "C:\\S\\Temp\\a.zip";
constexpr const char* kFolder = "C:\\S\\addons\\a";

// More than this would only cost time and memory.
constexpr std::uint64_t kMostBytes = 1U << 20U;
constexpr std::uint64_t kRefusedSize = 1U << 31U;

class KeptLog : public ExpectingLog {
 public:
  // Not an archive; a name without an end; out of memory; a file and a folder with the same name; a
  // name that leads elsewhere; a folder below a file.
  KeptLog() : ExpectingLog({0, 5, 7, 70, 75, 76}) {}

  void LogError(const std::string& time_text, const std::string& procedure, std::int32_t number,
                const std::string& description) override {
    ExpectingLog::LogError(time_text, procedure, number, description);
    Demand(std::none_of(description.begin(), description.end(),
                        [](char letter) { return static_cast<unsigned char>(letter) < 0x20; }),
           "an entry of the log is not torn by what stands in a package");
    has_refused = has_refused || number == 5 || number == 7 || number == 75;
  }

  bool has_refused = false;
};

/// An archive of the names and bytes in the lines. A name that begins with "+" is a deflated entry;
/// one that begins with "!" is an entry that declares more bytes than it has.
std::string Described(std::string_view lines) {
  std::vector<fakes::ZipFile> files;
  bool is_name = true;
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    std::string line(lines.substr(0, end));
    lines.remove_prefix(std::min(end + 1, lines.size()));
    if (is_name) {
      fakes::ZipFile& file = files.emplace_back();
      file.deflated = line.starts_with('+');
      if (line.starts_with('!')) {
        file.declared_size = 1000;
      }
      file.name = line.substr(file.deflated || file.declared_size ? 1 : 0);
    } else {
      files.back().bytes = line;
    }
    is_name = !is_name;
  }
  return fakes::ZipOf(files);
}

/// The sizes that the archive declares: of its largest entry, and of all entries.
struct Declared {
  std::uint64_t largest = 0;
  std::uint64_t all = 0;
};

Declared SizesOf(const platform::Files& files) {
  Declared declared;
  install::ZipArchive archive(files, kArchive);
  try {
    for (bool there = archive.is_open() && archive.GoToFirst(); there; there = archive.GoToNext()) {
      const std::uint64_t size = archive.Entry().size;
      declared.largest = std::max(declared.largest, size);
      declared.all += size;
    }
  } catch (const base::Failure&) {
    return declared;
  }
  return declared;
}

void Expand(const std::string& package) {
  fakes::MemoryFiles files;
  files.AddFolder(kFolder);
  files.AddFile(kArchive, package);
  const Declared declared = SizesOf(files);
  if (declared.largest < kRefusedSize && declared.all > kMostBytes) {
    return;
  }
  KeptLog log;
  std::string destination = kFolder;
  const bool expanded = install::PackageExpansion(log, files).ExpandZipFile(destination, kArchive);

  using Names = std::vector<std::string>;
  Demand(destination == std::string(kFolder) + "\\", "the destination ends in its separator");
  Demand(files.Names("C:\\") == Names{"S"} && files.Names("C:\\S") == Names{"addons", "Temp"} &&
             files.Names("C:\\S\\addons") == Names{"a"} &&
             files.Names("C:\\S\\Temp") == Names{"a.zip"},
         "nothing is written outside of the folder");
  Demand(files.Bytes(kArchive) == package, "the package stays as it is");
  Demand(!log.has_refused || (!expanded && files.Names(kFolder).empty()),
         "a package that is refused leaves nothing behind");
}

}  // namespace
}  // namespace kitbay::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  kitbay::fuzz::Expand(bytes.starts_with("PK") ? std::string(bytes)
                                               : kitbay::fuzz::Described(bytes));
  return 0;
}
