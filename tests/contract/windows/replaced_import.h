#pragma once

#include <cstdint>

namespace kitbay::contract {

/// As long as it lives, redirects the calls that this program, or one of its libraries, makes to a
/// function of the system to another function. Calls made by others are not affected.
class ReplacedImport {
 public:
  /// `name` is the function's name, as the program or the loaded `library` imports it;
  /// `replacement` has its signature. Throws `std::runtime_error` if that function is not imported.
  ReplacedImport(const char* name, void* replacement, const wchar_t* library = nullptr);
  ~ReplacedImport();
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

  /// The system's function, with the type of `sample`, which is not called.
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
