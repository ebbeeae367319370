// standard_user: starts the Kitbay.exe that lies beside it as Windows does for an administrator
// whose rights are not in force, which Wine calls a linked token. When it and all that it has
// started have ended, ends with the number of these processes; with 99 when it cannot.
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

std::wstring KitbayPath() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.rfind(L'\\') + 1) + L"Kitbay.exe";
}

// A job tells a port when its last process has ended.
DWORD RunToTheLast(const std::wstring& program) {
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

int main() {
  try {
    return static_cast<int>(RunToTheLast(KitbayPath()));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 99;
  }
}
