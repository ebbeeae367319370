// Writes to an invalid address.
#include <windows.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
  return S_OK;
}
