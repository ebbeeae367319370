#include "platform/libraries.h"

#include <windows.h>
// After windows.h, which they need.
#include <objbase.h>
#include <psapi.h>

#include <cstring>
#include <exception>

#include "base/failure.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/thread_guard.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsFullPathOfFile(const std::string& path) {
  if (path.size() < 4 || IsSeparator(path.back())) {
    return false;
  }
  return (path[1] == ':' && IsSeparator(path[2])) || (IsSeparator(path[0]) && IsSeparator(path[1]));
}

HMODULE AsModule(LibraryHandle library) { return reinterpret_cast<HMODULE>(library.value); }
HANDLE AsThread(ThreadHandle thread) { return reinterpret_cast<HANDLE>(thread.value); }

/// While it lives, a library that cannot be loaded is reported only by the call's result, not by a
/// message box.
class QuietLoading {
 public:
  QuietLoading() { SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &before_); }
  ~QuietLoading() { SetThreadErrorMode(before_, nullptr); }
  QuietLoading(const QuietLoading&) = delete;
  QuietLoading& operator=(const QuietLoading&) = delete;

 private:
  DWORD before_ = 0;
};

/// Looks up a function that systems before the update KB2533623 lack; null there.
template <typename Function>
Function FindInKernel(const char* name) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name);
  Function function = nullptr;
  static_assert(sizeof(function) == sizeof(address));
  std::memcpy(&function, &address, sizeof(function));
  return function;
}

/// Adds a folder to those searched for a library's dependencies. A folder that does not exist
/// changes nothing.
class HelperFolder {
 public:
  explicit HelperFolder(const std::string& folder) {
    const auto add = FindInKernel<void*(WINAPI*)(PCWSTR)>("AddDllDirectory");
    if (!folder.empty() && add != nullptr) {
      cookie_ = add(ToSystemPath(folder).c_str());
    }
  }
  ~HelperFolder() {
    const auto remove = FindInKernel<BOOL(WINAPI*)(void*)>("RemoveDllDirectory");
    if (cookie_ != nullptr && remove != nullptr) {
      remove(cookie_);
    }
  }
  HelperFolder(const HelperFolder&) = delete;
  HelperFolder& operator=(const HelperFolder&) = delete;

 private:
  void* cookie_ = nullptr;
};

struct Errand {
  const std::function<void()>& body;
  std::exception_ptr failure;
};

/// Keeps COM's multithreaded apartment alive. Threads that have joined no apartment, such as those
/// of a library's function, are in it meanwhile.
class SharedApartment {
 public:
  SharedApartment() : joined_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
  ~SharedApartment() {
    if (joined_) {
      CoUninitialize();
    }
  }
  SharedApartment(const SharedApartment&) = delete;
  SharedApartment& operator=(const SharedApartment&) = delete;

 private:
  bool joined_;
};

DWORD WINAPI RunErrand(void* argument) {
  auto& errand = *static_cast<Errand*>(argument);
  const SharedApartment apartment;
  try {
    errand.body();
  } catch (...) {
    errand.failure = std::current_exception();
  }
  return 0;
}

class Win32Libraries : public Libraries {
 public:
  LibraryHandle Load(const std::string& path, const std::string& helpers) override {
    if (!IsFullPathOfFile(path)) {
      throw base::Failure(base::RuntimeError::kPathFileAccessError, path);
    }
    const std::wstring system_path = ToSystemPath(path);
    const HelperFolder helper_folder(helpers);
    const QuietLoading quiet;
    guard_.NoteThreads();
    const HMODULE module =
        LoadLibraryExW(system_path.c_str(), nullptr,
                       LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    const DWORD error = GetLastError();
    if (module == nullptr) {
      throw SystemFailure(error, path);
    }
    return {reinterpret_cast<std::uintptr_t>(module)};
  }

  void Free(LibraryHandle library) override {
    const HMODULE module = AsModule(library);
    const bool has_running_thread = guard_.AbandonRunning();
    if (!has_running_thread && !guard_.HasNewThreads()) {
      FreeLibrary(module);
      return;
    }
    MODULEINFO place{};
    GetModuleInformation(GetCurrentProcess(), module, &place, sizeof(place));
    guard_.ExpectEmpty(place.lpBaseOfDll, place.SizeOfImage);
    FreeLibrary(module);
    // The range stays reserved, so that no other library is loaded where a thread will return to.
    VirtualAlloc(place.lpBaseOfDll, place.SizeOfImage, MEM_RESERVE, PAGE_NOACCESS);
  }

  ExportAddress FindExport(LibraryHandle library, const std::string& name) override {
    return {reinterpret_cast<std::uintptr_t>(GetProcAddress(AsModule(library), name.c_str()))};
  }

  ThreadHandle StartThread(ExportAddress start) override {
    return {reinterpret_cast<std::uintptr_t>(
        guard_.Start(reinterpret_cast<LPTHREAD_START_ROUTINE>(start.value)))};
  }

  bool Wait(ThreadHandle thread, std::uint32_t milliseconds) override {
    return WaitForSingleObject(AsThread(thread), milliseconds) == WAIT_OBJECT_0;
  }

  std::uint32_t ExitCode(ThreadHandle thread) override {
    DWORD code = kNoExitCode;
    GetExitCodeThread(AsThread(thread), &code);
    return code;
  }

  void Close(ThreadHandle thread) override { guard_.Close(AsThread(thread)); }

  [[noreturn]] void EndThread(std::uint32_t exit_code) override { ExitThread(exit_code); }

  void RunOnOwnThread(const std::function<void()>& body) override {
    Errand errand{body, nullptr};
    const UniqueKernelObject thread(CreateThread(nullptr, 0, &RunErrand, &errand, 0, nullptr));
    if (!thread) {
      throw base::Failure(base::RuntimeError::kOutOfMemory);
    }
    WaitForSingleObject(thread.get(), INFINITE);
    if (errand.failure) {
      std::rethrow_exception(errand.failure);
    }
  }

 private:
  ThreadGuard guard_;
};

}  // namespace

std::unique_ptr<Libraries> MakeLibraries() { return std::make_unique<Win32Libraries>(); }

}  // namespace kitbay::platform::win32
