#pragma once

#include <cstdint>

namespace kitbay::contract {

/// As long as it lives, the calls that this program, or one of its libraries, makes of a function
/// of the system go to another function. Calls that others make are left alone.
class ReplacedImport {
 public:
  /// `name` is the function's, as the program or the loaded `library` imports it; `replacement` has
  /// its signature. Throws `std::runtime_error` when it imports no such function.
  ReplacedImport(const char* name, void* replacement, const wchar_t* library = nullptr);
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
