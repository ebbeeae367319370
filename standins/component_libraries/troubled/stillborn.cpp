// Does not survive being loaded.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
  }
  return TRUE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() { return S_OK; }
