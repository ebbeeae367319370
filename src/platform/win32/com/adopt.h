#pragma once

#include <wrl/client.h>

namespace kitbay::platform::win32 {

/// Takes over the one reference that `object` was created with. `ComPtr::Attach` cannot do it: the
/// cross toolchain's version adds a reference of its own.
template <typename Object>
Microsoft::WRL::ComPtr<Object> Adopt(Object* object) {
  Microsoft::WRL::ComPtr<Object> owner;
  *owner.GetAddressOf() = object;
  return owner;
}

}  // namespace kitbay::platform::win32
