#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

namespace kitbay::platform::win32 {

/// A sink's connection to an object's events, closed when this object is destroyed.
class Connection {
 public:
  Connection() = default;

  /// Throws `base::Failure` with the HRESULT if `source` has no events of that kind or refuses the
  /// sink.
  Connection(IUnknown& source, REFIID events, IUnknown& sink);
  ~Connection() { Cut(); }
  Connection(Connection&& other) noexcept;
  Connection& operator=(Connection&& other) noexcept;

 private:
  void Cut() noexcept;

  Microsoft::WRL::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace kitbay::platform::win32
