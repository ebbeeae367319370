// kitbay_bench_memory KIND ENTRIES
// Lists a datastore once and prints one line of CSV: the kind, the number of entries, the bytes of
// the datastore, the listing's peak heap use in bytes, and the growth of the process in bytes. Each
// measurement needs its own process, because a process never shrinks again.

#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>
#include <string_view>

#include "sample_suite.h"

namespace {

std::size_t live_bytes = 0;
std::size_t most_bytes = 0;

void* Take(std::size_t size) {
  void* block = std::malloc(size);
  if (block != nullptr) {
    live_bytes += malloc_usable_size(block);
    most_bytes = live_bytes > most_bytes ? live_bytes : most_bytes;
  }
  return block;
}

void GiveBack(void* block) {
  if (block != nullptr) {
    live_bytes -= malloc_usable_size(block);
    std::free(block);
  }
}

long ProcessBytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024;
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* block = Take(size)) {
    return block;
  }
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept { GiveBack(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { GiveBack(block); }

int main(int argc, char** argv) {
  using kitbay::base::ComponentKind;
  if (argc != 3) {
    std::fprintf(stderr, "usage: kitbay_bench_memory addons|transports|channels ENTRIES\n");
    return 2;
  }
  pugi::set_memory_management_functions(Take, GiveBack);
  const std::string_view name = argv[1];
  const ComponentKind kind = name == "addons"       ? ComponentKind::kAddon
                             : name == "transports" ? ComponentKind::kTransport
                                                    : ComponentKind::kChannel;
  const std::size_t entries = std::strtoul(argv[2], nullptr, 10);

  // Lists a small datastore first, so that one-time set-up does not count.
  kitbay::bench::SampleSuite(kind, 1).List();
  kitbay::bench::SampleSuite suite(kind, entries);
  const std::size_t live_before = live_bytes;
  const long process_before = ProcessBytes();
  most_bytes = live_bytes;
  suite.List();
  if (suite.rows().rows() != entries || live_bytes != live_before) {
    std::fprintf(stderr, "not every entry became a row, or memory was kept\n");
    return 1;
  }
  std::printf("%s,%zu,%zu,%zu,%ld\n", argv[1], entries, suite.datastore().size(),
              most_bytes - live_before, ProcessBytes() - process_before);
  return 0;
}
