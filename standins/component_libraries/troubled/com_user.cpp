// Uses COM as it registers itself, without having joined an apartment, as many libraries do.
#include <windows.h>
// <objbase.h> needs the former.
#include <objbase.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  IUnknown* object = nullptr;
  const HRESULT created =
      CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                       reinterpret_cast<void**>(&object));
  if (object != nullptr) {
    object->Release();
  }
  return created;
}
