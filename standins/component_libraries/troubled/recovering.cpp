// Causes exceptions and faults, and handles each of them itself.
#include <windows.h>

#include <stdexcept>

namespace {

constexpr SIZE_T kPageSize = 4096;
char* g_page = nullptr;  // handlers of exceptions get no argument

LONG CALLBACK GiveMemory(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& fault = *exception->ExceptionRecord;
  if (fault.ExceptionCode != EXCEPTION_ACCESS_VIOLATION ||
      fault.ExceptionInformation[1] != reinterpret_cast<ULONG_PTR>(g_page)) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  VirtualAlloc(g_page, kPageSize, MEM_COMMIT, PAGE_READWRITE);
  return EXCEPTION_CONTINUE_EXECUTION;
}

bool CatchesWhatIsThrown() {
  try {
    throw std::runtime_error("caught");
  } catch (const std::runtime_error&) {
    return true;
  }
}

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  g_page = static_cast<char*>(VirtualAlloc(nullptr, kPageSize, MEM_RESERVE, PAGE_READWRITE));
  void* const handler = AddVectoredExceptionHandler(1, &GiveMemory);
  *static_cast<volatile char*>(g_page) = 1;
  RemoveVectoredExceptionHandler(handler);
  VirtualFree(g_page, 0, MEM_RELEASE);
  return CatchesWhatIsThrown() ? S_OK : E_FAIL;
}
