// A machine that is short of memory. This is a separate program, because it replaces the operator
// that allocates the memory for an entry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <string>

#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "fakes/zip_bytes.h"
#include "install/package_expansion.h"

namespace {

constexpr std::size_t kMostAtOnce = 1'000'000'000;

}  // namespace

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return size > kMostAtOnce ? nullptr : std::malloc(size);
}
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void* operator new[](std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

namespace kitbay::install {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ExpansionWithoutMemory, NamesTheLargestEntryAndWritesNothing) {
  fakes::MemoryFiles files;
  fakes::RecordingErrorLog log;
  files.AddFolder("C:\\S");
  files.AddFile("C:\\a.zip",
                fakes::ZipOf({{"first.txt", "1"},
                              {.name = "bin/large.bin",
                               .bytes = "2",
                               .declared_size = std::numeric_limits<std::int32_t>::max()},
                              {"last.txt", "3"}}));
  std::string destination = "C:\\S";
  EXPECT_FALSE(PackageExpansion(log, files).ExpandZipFile(destination, "C:\\a.zip"));
  EXPECT_THAT(log.entries, ElementsAre(fakes::Entry("Kitbay...ExpandZipFile", 7,
                                                    "Out of memory: bin\\large.bin")));
  EXPECT_THAT(files.Names("C:\\S"), IsEmpty());
}

}  // namespace
}  // namespace kitbay::install
