#include "platform/win32/system/thread_guard.h"

// After windows.h, which it needs.
#include <tlhelp32.h>

#include <algorithm>
#include <array>

#include "platform/win32/system/handles.h"

namespace kitbay::platform::win32 {
namespace {

struct WatchedThread {
  HANDLE handle = nullptr;
  DWORD id = 0;
  bool is_abandoned = false;
};

struct EmptyPlace {
  ULONG_PTR begin = 0;
  ULONG_PTR end = 0;
};

constexpr std::size_t kMostThreads = 64;

// The system gives its handlers no argument to find an object by, and the handlers outlive every
// guard.
SRWLOCK g_lock = SRWLOCK_INIT;
std::array<WatchedThread, kMostThreads> g_threads;
std::array<EmptyPlace, kMostThreads> g_empty_places;
DWORD g_owner = 0;
LPTOP_LEVEL_EXCEPTION_FILTER g_previous_filter = nullptr;

class ExclusiveLock {
 public:
  ExclusiveLock() { AcquireSRWLockExclusive(&g_lock); }
  ~ExclusiveLock() { ReleaseSRWLockExclusive(&g_lock); }
  ExclusiveLock(const ExclusiveLock&) = delete;
  ExclusiveLock& operator=(const ExclusiveLock&) = delete;
};

class SharedLock {
 public:
  SharedLock() { AcquireSRWLockShared(&g_lock); }
  ~SharedLock() { ReleaseSRWLockShared(&g_lock); }
  SharedLock(const SharedLock&) = delete;
  SharedLock& operator=(const SharedLock&) = delete;
};

WatchedThread CurrentThread() {
  const SharedLock lock;
  const auto* thread = std::ranges::find(g_threads, GetCurrentThreadId(), &WatchedThread::id);
  return thread == g_threads.end() ? WatchedThread{} : *thread;
}

bool IsInEmptyPlace(ULONG_PTR address) {
  const SharedLock lock;
  return std::ranges::any_of(g_empty_places, [&](const EmptyPlace& place) {
    return place.begin <= address && address < place.end;
  });
}

/// Whether the calling thread has lost the code that it was running at `address`.
bool HasLostItsCode(ULONG_PTR address) {
  return CurrentThread().is_abandoned ||
         (GetCurrentThreadId() != g_owner && IsInEmptyPlace(address));
}

/// Whether the fault is that there is no code where the thread continues.
bool IsWithoutCode(const EXCEPTION_RECORD& exception) {
  return exception.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && exception.NumberParameters >= 2 &&
         exception.ExceptionInformation[1] ==
             reinterpret_cast<ULONG_PTR>(exception.ExceptionAddress);
}

LONG WINAPI EndFaultedThread(EXCEPTION_POINTERS* exception) {
  if (CurrentThread().handle != nullptr) {
    ExitThread(exception->ExceptionRecord->ExceptionCode);
  }
  return g_previous_filter != nullptr ? g_previous_filter(exception) : EXCEPTION_CONTINUE_SEARCH;
}

// Without the library's code the thread's stack cannot be unwound, and the system would end the
// process before it calls the filter below.
LONG CALLBACK EndLostThread(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  // The library's run-time may have replaced this filter by its own, even just now.
  if (CurrentThread().handle != nullptr) {
    SetUnhandledExceptionFilter(&EndFaultedThread);
  }
  if (IsWithoutCode(record) && HasLostItsCode(record.ExceptionInformation[1])) {
    ExitThread(record.ExceptionCode);
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

bool HasEnded(const WatchedThread& thread) {
  return WaitForSingleObject(thread.handle, 0) == WAIT_OBJECT_0;
}

/// The threads of this process.
std::set<DWORD> OwnThreads() {
  std::set<DWORD> threads;
  const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL there = snapshot ? Thread32First(snapshot.get(), &entry) : FALSE; there;
       there = Thread32Next(snapshot.get(), &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) {
      threads.insert(entry.th32ThreadID);
    }
  }
  return threads;
}

}  // namespace

ThreadGuard::ThreadGuard() {
  constexpr ULONG kAfterAllOthers = 0;
  handler_ = AddVectoredExceptionHandler(kAfterAllOthers, &EndLostThread);
  g_owner = GetCurrentThreadId();
  const auto previous = SetUnhandledExceptionFilter(&EndFaultedThread);
  if (previous != &EndFaultedThread) {
    g_previous_filter = previous;
  }
}

ThreadGuard::~ThreadGuard() {
  const ExclusiveLock lock;
  if (std::ranges::all_of(g_threads, [](const WatchedThread& thread) {
        return thread.handle == nullptr || HasEnded(thread);
      })) {
    RemoveVectoredExceptionHandler(handler_);
    SetUnhandledExceptionFilter(g_previous_filter);
  }
}

HANDLE ThreadGuard::Start(LPTHREAD_START_ROUTINE start) {
  // Locked, so that the thread cannot fault before it is watched.
  const ExclusiveLock lock;
  auto* const place =
      std::ranges::find(g_threads, static_cast<HANDLE>(nullptr), &WatchedThread::handle);
  if (place == g_threads.end()) {
    return nullptr;
  }
  place->handle = CreateThread(nullptr, 0, start, nullptr, 0, &place->id);
  if (place->handle == nullptr) {
    *place = {};
  }
  return place->handle;
}

bool ThreadGuard::AbandonRunning() {
  const ExclusiveLock lock;
  bool any = false;
  for (WatchedThread& thread : g_threads) {
    if (thread.handle != nullptr && !thread.is_abandoned && !HasEnded(thread)) {
      thread.is_abandoned = true;
      any = true;
    }
  }
  return any;
}

void ThreadGuard::NoteThreads() { noted_threads_ = OwnThreads(); }

bool ThreadGuard::HasNewThreads() const {
  return std::ranges::any_of(OwnThreads(),
                             [&](DWORD thread) { return !noted_threads_.contains(thread); });
}

void ThreadGuard::ExpectEmpty(const void* place, SIZE_T size) {
  const ExclusiveLock lock;
  auto* const entry =
      std::ranges::find(g_empty_places, static_cast<ULONG_PTR>(0), &EmptyPlace::begin);
  if (entry != g_empty_places.end()) {
    const auto begin = reinterpret_cast<ULONG_PTR>(place);
    *entry = {begin, begin + size};
  }
}

void ThreadGuard::Close(HANDLE thread) {
  const ExclusiveLock lock;
  auto* const place = std::ranges::find(g_threads, thread, &WatchedThread::handle);
  if (place != g_threads.end()) {
    *place = {};
  }
  // A filter that the library has set for the process goes with the library.
  SetUnhandledExceptionFilter(&EndFaultedThread);
  CloseHandle(thread);
}

}  // namespace kitbay::platform::win32
