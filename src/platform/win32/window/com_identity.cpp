#include "platform/win32/window/com_identity.h"

#include <wrl/client.h>

namespace kitbay::platform::win32 {

bool IsSameObject(IUnknown* first, IUnknown* second) {
  if (first == nullptr || second == nullptr) return false;
  Microsoft::WRL::ComPtr<IUnknown> identity;
  Microsoft::WRL::ComPtr<IUnknown> other_identity;
  if (FAILED(first->QueryInterface(IID_PPV_ARGS(&identity)))) return false;
  if (FAILED(second->QueryInterface(IID_PPV_ARGS(&other_identity)))) return false;
  // Compares the pointers themselves: this toolchain's ComPtr only compares whether both are null.
  return identity.Get() == other_identity.Get();
}

}  // namespace kitbay::platform::win32
