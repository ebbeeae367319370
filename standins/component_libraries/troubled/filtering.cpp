// Sets its own filter for unhandled exceptions, as the run-times of some compilers do, and then
// writes to an invalid address.
#include <windows.h>

namespace {

LONG WINAPI EndProgram(EXCEPTION_POINTERS* exception) {
  ExitProcess(exception->ExceptionRecord->ExceptionCode);
}

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  SetUnhandledExceptionFilter(&EndProgram);
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
  return S_OK;
}
