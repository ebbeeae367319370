// Cannot be loaded without another library.
#include <windows.h>

extern "C" __declspec(dllimport) int OvlHelp();

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  return OvlHelp() == 1 ? S_OK : E_FAIL;
}
