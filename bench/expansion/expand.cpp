// kitbay_bench_expansion ARCHIVE FOLDER
// Expands an archive into a folder as Kitbay does, on this machine's file system.
#include <cstdio>
#include <string>

#include "fakes/disk_files.h"
#include "install/package_expansion.h"

namespace {

/// Ends the run, because what is measured must work.
class PrintedLog : public kitbay::base::ErrorLog {
 public:
  std::string TimeText() const override { return {}; }
  void LogError(const std::string& /*time_text*/, const std::string& procedure, std::int32_t number,
                const std::string& description) override {
    std::fprintf(stderr, "%s: %d %s\n", procedure.c_str(), number, description.c_str());
    has_entries = true;
  }

  bool has_entries = false;
};

}  // namespace

int main(int count, char** words) {
  if (count != 3) {
    std::fputs("usage: kitbay_bench_expansion ARCHIVE FOLDER\n", stderr);
    return 2;
  }
  PrintedLog log;
  kitbay::fakes::DiskFiles files("");
  std::string destination = words[2];
  const bool expanded =
      kitbay::install::PackageExpansion(log, files).ExpandZipFile(destination, words[1]);
  return expanded && !log.has_entries ? 0 : 1;
}
