// standard_user: starts the Kitbay.exe that lies beside it as Windows does for an administrator
// whose rights are not in force, which Wine calls a linked token, with consent.dll in it. When it
// and all that it has started have ended, ends with the number of these processes; with 99 when it
// cannot.
#include <windows.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "platform/win32/system/handles.h"

namespace {

using kitbay::platform::win32::UniqueKernelObject;

void Demand(bool is_done, const char* step) {
  const DWORD error = GetLastError();
  if (!is_done) throw std::runtime_error(step + (" failed with " + std::to_string(error)));
}

UniqueKernelObject LimitedToken() {
  UniqueKernelObject own;
  TOKEN_LINKED_TOKEN linked{};
  DWORD size = 0;
  Demand(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, own.put()), "OpenProcessToken");
  Demand(GetTokenInformation(own.get(), TokenLinkedToken, &linked, sizeof linked, &size),
         "GetTokenInformation");
  return UniqueKernelObject(linked.LinkedToken);
}

std::wstring Beside(const wchar_t* name) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.rfind(L'\\') + 1) + name;
}

// The system's libraries lie at the same addresses in all processes.
void LoadInto(HANDLE process, const std::wstring& library) {
  const std::size_t size = (library.size() + 1) * sizeof(wchar_t);
  void* name = VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
  Demand(name != nullptr, "VirtualAllocEx");
  Demand(WriteProcessMemory(process, name, library.c_str(), size, nullptr), "WriteProcessMemory");
  auto* const load =
      reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(&LoadLibraryW));
  const UniqueKernelObject loading(CreateRemoteThread(process, nullptr, 0, load, name, 0, nullptr));
  Demand(static_cast<bool>(loading), "CreateRemoteThread");
  WaitForSingleObject(loading.get(), INFINITE);
  DWORD is_loaded = 0;
  Demand(GetExitCodeThread(loading.get(), &is_loaded) && is_loaded != 0, "LoadLibrary");
}

// A job tells a port when its last process has ended.
DWORD RunToTheLast(const std::wstring& program, const std::wstring& library) {
  const UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
  const UniqueKernelObject port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
  JOBOBJECT_ASSOCIATE_COMPLETION_PORT tell{nullptr, port.get()};
  Demand(SetInformationJobObject(job.get(), JobObjectAssociateCompletionPortInformation, &tell,
                                 sizeof tell),
         "SetInformationJobObject");
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  Demand(CreateProcessAsUserW(LimitedToken().get(), program.c_str(), nullptr, nullptr, nullptr,
                              FALSE, CREATE_SUSPENDED, nullptr, nullptr, &startup, &started),
         "CreateProcessAsUser");
  const UniqueKernelObject process(started.hProcess);
  const UniqueKernelObject thread(started.hThread);
  Demand(AssignProcessToJobObject(job.get(), process.get()), "AssignProcessToJobObject");
  if (!library.empty()) LoadInto(process.get(), library);
  ResumeThread(thread.get());

  DWORD processes = 0;
  DWORD message = 0;
  ULONG_PTR key = 0;
  OVERLAPPED* process_id = nullptr;
  while (message != JOB_OBJECT_MSG_ACTIVE_PROCESS_ZERO) {
    Demand(GetQueuedCompletionStatus(port.get(), &message, &key, &process_id, INFINITE),
           "GetQueuedCompletionStatus");
    if (message == JOB_OBJECT_MSG_NEW_PROCESS) ++processes;
  }
  return processes;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  try {
    const bool is_named = count > 1;
    return static_cast<int>(is_named ? RunToTheLast(words[1], L"")
                                     : RunToTheLast(Beside(L"Kitbay.exe"), Beside(L"consent.dll")));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 99;
  }
}
