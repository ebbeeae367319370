#pragma once

#include <cstdint>

namespace kitbay::contract {

/// As long as it lives, this program's calls of a function of the system go to another function.
/// Calls that libraries make are left alone.
class ReplacedImport {
 public:
  /// `name` is the function's, as this program imports it; `replacement` has its signature. Throws
  /// `std::runtime_error` when the program imports no such function.
  ReplacedImport(const char* name, void* replacement);
  ~ReplacedImport();
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

  /// The system's function, of the type of `sample`, which is not called.
  template <typename Function>
  Function* original(Function& /*sample*/) const {
    return reinterpret_cast<Function*>(original_);
  }

 private:
  void Set(std::uintptr_t address);

  std::uintptr_t* place_ = nullptr;
  std::uintptr_t original_ = 0;
};

}  // namespace kitbay::contract
