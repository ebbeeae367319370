// Like many libraries, uses COM while it registers itself, without having joined an apartment.
#include <windows.h>
// After windows.h, which it needs.
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
