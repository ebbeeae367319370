#pragma once

#include <windows.h>

#include <set>

namespace kitbay::platform::win32 {

/// Starts threads whose faults end only them and not the process: an exception that nothing on such
/// a thread handles, whatever filter a library has set for the process, and the return into a
/// library that has been freed. The exit code is then the exception's. Exceptions of other threads,
/// and those that a library handles itself, take their normal course.
///
/// The handlers stay for good if a thread is still running when the guard is destroyed.
class ThreadGuard {
 public:
  ThreadGuard();
  ~ThreadGuard();
  ThreadGuard(const ThreadGuard&) = delete;
  ThreadGuard& operator=(const ThreadGuard&) = delete;

  /// The handle of a new thread on `start`, which may be null; null if the system cannot create
  /// one.
  HANDLE Start(LPTHREAD_START_ROUTINE start);

  /// Announces that threads which still run may lose the code that they run in. Returns whether
  /// there are any that were not announced before.
  bool AbandonRunning();

  /// Remembers which threads the process has, before a library is loaded.
  void NoteThreads();

  /// Whether threads started since then are still running. One of the library's own may be in the
  /// middle of the library's code; one of the system's may be too, and is then counted needlessly.
  bool HasNewThreads() const;

  /// A library in whose code a thread may be is about to be freed: every thread that continues in
  /// its address range ends, whoever started it, except the one that created the guard.
  void ExpectEmpty(const void* place, SIZE_T size);

  /// Closes the thread's handle and stops watching it.
  void Close(HANDLE thread);

 private:
  void* handler_ = nullptr;
  std::set<DWORD> noted_threads_;
};

}  // namespace kitbay::platform::win32
