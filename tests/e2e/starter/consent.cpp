// Stands in for Windows' question before it starts an elevated program. Wine starts it without
// asking.
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <cwchar>
#include <memory>

#include "contract/windows/replaced_import.h"

namespace {

BOOL WINAPI AskFirst(SHELLEXECUTEINFOW* start);

/// The program's call, which asks first while the library is loaded.
std::unique_ptr<kitbay::contract::ReplacedImport>& Replaced() {
  static std::unique_ptr<kitbay::contract::ReplacedImport> replaced;
  return replaced;
}

BOOL WINAPI AskFirst(SHELLEXECUTEINFOW* start) {
  const bool is_question = start->lpVerb != nullptr && std::wcscmp(start->lpVerb, L"runas") == 0;
  if (is_question &&
      MessageBoxW(nullptr, start->lpFile, L"User Account Control", MB_YESNO) != IDYES) {
    SetLastError(ERROR_CANCELLED);
    return FALSE;
  }
  return Replaced()->original(AskFirst)(start);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    Replaced() = std::make_unique<kitbay::contract::ReplacedImport>(
        "ShellExecuteExW", reinterpret_cast<void*>(&AskFirst));
  }
  return TRUE;
}
