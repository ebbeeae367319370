// Lets a C++ exception out, as a library built with the system's usual compiler throws it. (This
// tree's own compiler would end the process: its 32-bit exceptions are unknown to the system.)
#include <windows.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  constexpr DWORD kCxxException = 0xE06D7363;
  RaiseException(kCxxException, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  return S_OK;
}
