#pragma once

#include <windows.h>

#include <utility>

namespace kitbay::platform::win32 {

/// Owns one handle of the system. `Traits` has `Type`, `Invalid()`, which stands for no handle, and
/// `Close(Type)`, which is called for all others.
template <typename Traits>
class UniqueHandle {
 public:
  using Type = typename Traits::Type;

  UniqueHandle() = default;
  explicit UniqueHandle(Type handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { reset(); }

  explicit operator bool() const { return handle_ != Traits::Invalid(); }
  Type get() const { return handle_; }

  /// Releases the handle without closing it.
  Type release() { return std::exchange(handle_, Traits::Invalid()); }

  void reset(Type handle = Traits::Invalid()) {
    const Type old = std::exchange(handle_, handle);
    if (old != Traits::Invalid() && old != handle) {
      Traits::Close(old);
    }
  }

  /// For calls that return a handle through a pointer. Closes the handle held before.
  Type* put() {
    reset();
    return &handle_;
  }

 private:
  Type handle_ = Traits::Invalid();
};

struct FileTraits {
  using Type = HANDLE;
  static Type Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Type handle) { CloseHandle(handle); }
};
struct FindTraits {
  using Type = HANDLE;
  static Type Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Type handle) { FindClose(handle); }
};
struct KernelObjectTraits {
  using Type = HANDLE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { CloseHandle(handle); }
};
struct RegistryKeyTraits {
  using Type = HKEY;
  static Type Invalid() { return nullptr; }
  static void Close(Type key) { RegCloseKey(key); }
};
struct ModuleTraits {
  using Type = HMODULE;
  static Type Invalid() { return nullptr; }
  static void Close(Type module) { FreeLibrary(module); }
};
struct CursorTraits {
  using Type = HCURSOR;
  static Type Invalid() { return nullptr; }
  static void Close(Type cursor) { DestroyCursor(cursor); }
};
struct FontTraits {
  using Type = HFONT;
  static Type Invalid() { return nullptr; }
  static void Close(Type font) { DeleteObject(font); }
};

using UniqueFile = UniqueHandle<FileTraits>;
using UniqueFind = UniqueHandle<FindTraits>;
using UniqueKernelObject = UniqueHandle<KernelObjectTraits>;  ///< process, thread, event, mutex
using UniqueRegistryKey = UniqueHandle<RegistryKeyTraits>;
using UniqueModule = UniqueHandle<ModuleTraits>;
using UniqueCursor = UniqueHandle<CursorTraits>;
using UniqueFont = UniqueHandle<FontTraits>;

}  // namespace kitbay::platform::win32
