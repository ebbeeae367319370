#pragma once

#include <windows.h>

#include <string>

namespace kitbay::platform::win32 {

/// The classes that a side-by-side manifest names, which need not be registered.
class ActivationContext {
 public:
  /// Uses the manifest at `path`; has no classes if that cannot be read.
  explicit ActivationContext(const std::wstring& path);
  ~ActivationContext();
  ActivationContext(const ActivationContext&) = delete;
  ActivationContext& operator=(const ActivationContext&) = delete;

  /// While this object lives, its thread finds the context's classes first.
  class Active {
   public:
    explicit Active(const ActivationContext& context);
    ~Active();
    Active(const Active&) = delete;
    Active& operator=(const Active&) = delete;

   private:
    ULONG_PTR cookie_ = 0;  // declared before the flag, whose initialisation fills it
    bool is_active_;
  };

 private:
  HANDLE context_;
};

}  // namespace kitbay::platform::win32
