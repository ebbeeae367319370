// starter [--limited] [--with LIBRARY] PROGRAM: starts a program and injects the library, which
// lies beside this program. With --limited, starts it as Windows does for an administrator who is
// not elevated, with what Wine calls a linked token. When the program and everything that it
// started have ended, exits with the number of these processes, or with 99 on failure.
#include <windows.h>

#include <cstdio>
#include <deque>
#include <stdexcept>
#include <string>

#include "platform/win32/system/handles.h"

namespace {

using kitbay::platform::win32::UniqueKernelObject;

void Demand(bool is_done, const char* step) {
  const DWORD error = GetLastError();
  if (!is_done) {
    throw std::runtime_error(step + (" failed with " + std::to_string(error)));
  }
}

struct Order {
  bool is_limited = false;
  std::wstring put_in;  ///< the injected library; empty for none
  std::wstring program;
};

UniqueKernelObject TokenFor(const Order& order) {
  constexpr DWORD kAccess = TOKEN_QUERY | TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY;
  UniqueKernelObject own;
  TOKEN_LINKED_TOKEN linked{};
  DWORD size = 0;
  Demand(OpenProcessToken(GetCurrentProcess(), kAccess, own.put()), "OpenProcessToken");
  if (!order.is_limited) {
    return own;
  }
  // Newer versions of Wine start every program so.
  TOKEN_ELEVATION_TYPE type{};
  Demand(GetTokenInformation(own.get(), TokenElevationType, &type, sizeof type, &size),
         "GetTokenInformation");
  if (type == TokenElevationTypeLimited) {
    return own;
  }
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

// A job notifies a port when its last process has ended.
DWORD RunToTheLast(const Order& order) {
  const UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
  const UniqueKernelObject port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
  JOBOBJECT_ASSOCIATE_COMPLETION_PORT tell{nullptr, port.get()};
  Demand(SetInformationJobObject(job.get(), JobObjectAssociateCompletionPortInformation, &tell,
                                 sizeof tell),
         "SetInformationJobObject");
  // Wine's desktop is a process, started by whoever needs it first, and with their rights. It does
  // not belong to the program, and ends long after it.
  if (!order.is_limited) {
    GetDesktopWindow();
  }
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  Demand(
      CreateProcessAsUserW(TokenFor(order).get(), order.program.c_str(), nullptr, nullptr, nullptr,
                           FALSE, CREATE_SUSPENDED, nullptr, nullptr, &startup, &started),
      "CreateProcessAsUser");
  const UniqueKernelObject process(started.hProcess);
  const UniqueKernelObject thread(started.hThread);
  Demand(AssignProcessToJobObject(job.get(), process.get()), "AssignProcessToJobObject");
  if (!order.put_in.empty()) {
    LoadInto(process.get(), order.put_in);
  }
  ResumeThread(thread.get());

  DWORD processes = 0;
  DWORD message = 0;
  ULONG_PTR key = 0;
  OVERLAPPED* process_id = nullptr;
  while (message != JOB_OBJECT_MSG_ACTIVE_PROCESS_ZERO) {
    Demand(GetQueuedCompletionStatus(port.get(), &message, &key, &process_id, INFINITE),
           "GetQueuedCompletionStatus");
    if (message == JOB_OBJECT_MSG_NEW_PROCESS) {
      ++processes;
    }
  }
  return processes;
}

Order Read(std::deque<std::wstring> words) {
  Order order;
  for (; words.size() > 1; words.pop_front()) {
    if (words.front() == L"--limited") {
      order.is_limited = true;
    } else if (words.front() == L"--with") {
      words.pop_front();
      order.put_in = Beside(words.front().c_str());
    }
  }
  if (words.empty()) {
    throw std::runtime_error("no program");
  }
  order.program = words.front();
  return order;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  try {
    return static_cast<int>(RunToTheLast(Read({words + 1, words + count})));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 99;
  }
}
