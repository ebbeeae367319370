// kitbay_bench_expansion ARCHIVE FOLDER
// Expands an archive into a folder as Kitbay does, on this machine's file system.
#include <cstdio>
#include <string>

#include "fakes/disk_files.h"
#include "install/package_expansion.h"
#include "printed_log.h"

int main(int count, char** words) {
  if (count != 3) {
    std::fputs("usage: kitbay_bench_expansion ARCHIVE FOLDER\n", stderr);
    return 2;
  }
  kitbay::bench::PrintedLog log;
  kitbay::fakes::DiskFiles files("");
  std::string destination = words[2];
  const bool expanded =
      kitbay::install::PackageExpansion(log, files).ExpandZipFile(destination, words[1]);
  return expanded && !log.has_entries ? 0 : 1;
}
