#include "module.h"

#include <windows.h>

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

void ModuleLock::Pin() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&ModuleLock::Pin), &module);
}

bool ModuleLock::CanUnload() { return Locks() == 0; }

}  // namespace ovalink
