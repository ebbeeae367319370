// Lets a C++ exception out, as a library of the system's usual compiler throws it. (This tree's own
// compiler would end the process: with 32 bits its exceptions are nothing that the system knows
// of.)
#include <windows.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  constexpr DWORD kCxxException = 0xE06D7363;
  RaiseException(kCxxException, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  return S_OK;
}
