// Lets an exception out.
#include <windows.h>

#include <stdexcept>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  throw std::runtime_error("no class can be registered");
}
