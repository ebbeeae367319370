// Cannot register itself, and says so.
#include <windows.h>

#include <olectl.h>

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() { return SELFREG_E_CLASS; }
