#include "module.h"

#include <atomic>

namespace ovalink {
namespace {

// COM asks the library as a whole whether it is in use.
std::atomic<long>& Locks() {
  static std::atomic<long> locks{0};
  return locks;
}

}  // namespace

void ModuleLock::Hold(bool hold) { Locks() += hold ? 1 : -1; }

bool ModuleLock::CanUnload() { return Locks() == 0; }

}  // namespace ovalink
