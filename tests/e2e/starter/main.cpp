// starter [--limited|--elevated] [--with LIBRARY] PROGRAM: starts a program and injects the
// library, which lies beside this program. With --limited, starts it as Windows does for an
// administrator who is not elevated, with --elevated for one who is, and otherwise as Wine does,
// which differs from version to version. When the program and everything that it started have
// ended, exits with the number of these processes; with --elevated, exits with the program's exit
// code as soon as the program has ended. Exits with 99 on failure.
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

// Given in place of a program, only starts Wine's desktop.
constexpr const wchar_t* kDesktop = L"--desktop";

struct Order {
  /// The kind of token to start with; the default is that of this program.
  TOKEN_ELEVATION_TYPE rights = TokenElevationTypeDefault;
  std::wstring put_in;  ///< the injected library; empty for none
  std::wstring program;
};

// Of the two linked tokens of an administrator, Wine starts programs with either, according to its
// version.
UniqueKernelObject TokenFor(const Order& order) {
  constexpr DWORD kAccess = TOKEN_QUERY | TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY;
  UniqueKernelObject own;
  TOKEN_ELEVATION_TYPE type{};
  TOKEN_LINKED_TOKEN linked{};
  DWORD size = 0;
  Demand(OpenProcessToken(GetCurrentProcess(), kAccess, own.put()), "OpenProcessToken");
  Demand(GetTokenInformation(own.get(), TokenElevationType, &type, sizeof type, &size),
         "GetTokenInformation");
  if (order.rights == TokenElevationTypeDefault || order.rights == type) {
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

struct Started {
  UniqueKernelObject process;
  UniqueKernelObject thread;
};

Started StartSuspended(const std::wstring& program, std::wstring command_line, HANDLE token) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  Demand(CreateProcessAsUserW(token, program.c_str(), command_line.data(), nullptr, nullptr, FALSE,
                              CREATE_SUSPENDED, nullptr, nullptr, &startup, &started),
         "CreateProcessAsUser");
  return {UniqueKernelObject(started.hProcess), UniqueKernelObject(started.hThread)};
}

DWORD Finish(const Started& started) {
  ResumeThread(started.thread.get());
  WaitForSingleObject(started.process.get(), INFINITE);
  DWORD code = 0;
  Demand(GetExitCodeProcess(started.process.get(), &code), "GetExitCodeProcess");
  return code;
}

// Wine's desktop is a process, started by whoever needs it first, and with their rights. It does
// not belong to the program, and ends only after this one, so the program must not be the one that
// starts it.
Started StartOnDesktop(const Order& order) {
  const UniqueKernelObject token = TokenFor(order);
  const Started desktop =
      StartSuspended(Beside(L"starter.exe"), std::wstring(L"starter ") + kDesktop, token.get());
  Demand(Finish(desktop) == 0, "starting the desktop");
  Started started = StartSuspended(order.program, L'"' + order.program + L'"', token.get());
  if (!order.put_in.empty()) {
    LoadInto(started.process.get(), order.put_in);
  }
  return started;
}

// A job notifies a port when its last process has ended.
DWORD RunToTheLast(const Order& order) {
  const UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
  const UniqueKernelObject port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
  JOBOBJECT_ASSOCIATE_COMPLETION_PORT tell{nullptr, port.get()};
  Demand(SetInformationJobObject(job.get(), JobObjectAssociateCompletionPortInformation, &tell,
                                 sizeof tell),
         "SetInformationJobObject");
  const Started started = StartOnDesktop(order);
  Demand(AssignProcessToJobObject(job.get(), started.process.get()), "AssignProcessToJobObject");
  ResumeThread(started.thread.get());

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
      order.rights = TokenElevationTypeLimited;
    } else if (words.front() == L"--elevated") {
      order.rights = TokenElevationTypeFull;
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
    const Order order = Read({words + 1, words + count});
    if (order.program == kDesktop) {
      GetDesktopWindow();
      return 0;
    }
    const bool stands_for_it = order.rights == TokenElevationTypeFull;
    return static_cast<int>(stands_for_it ? Finish(StartOnDesktop(order)) : RunToTheLast(order));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 99;
  }
}
