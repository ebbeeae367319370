#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>

namespace kitbay::platform::win32 {

/// The reference count of a COM object, which is created with one reference and destroyed with its
/// last.
template <typename... Interfaces>
class CountedObject : public Interfaces... {
 public:
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;

 protected:
  /// Every base is constructed from the same `state`.
  template <typename... State>
  explicit CountedObject(const State&... state) : Interfaces(state...)... {}
  virtual ~CountedObject() = default;

 private:
  std::atomic<ULONG> references_{1};
};

}  // namespace kitbay::platform::win32
