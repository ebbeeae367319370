#pragma once

#include <windows.h>

#include <set>

namespace kitbay::platform::win32 {

/// Starts threads whose faults end them instead of the process: an exception that nothing on such
/// a thread handles, whatever filter a library has set for the process, and the return into a
/// library that is no longer there. The exit code is then the exception's. Exceptions of other
/// threads, and those that a library handles itself, go their way.
///
/// The handlers stay for good when a thread still runs as the guard goes.
class ThreadGuard {
 public:
  ThreadGuard();
  ~ThreadGuard();
  ThreadGuard(const ThreadGuard&) = delete;
  ThreadGuard& operator=(const ThreadGuard&) = delete;

  /// A handle of a new thread on `start`, which may be null; null when the system cannot make one.
  HANDLE Start(LPTHREAD_START_ROUTINE start);

  /// The threads that still run may lose the code that they run in. Returns whether there are any
  /// that have not been told of before.
  bool AbandonRunning();

  /// Remembers which threads the process has, before a library is loaded.
  void NoteThreads();

  /// Whether threads have come into being since then that still run. One of the library's own may
  /// be in its middle; so may one of the system's, and is then counted in vain.
  bool HasNewThreads() const;

  /// A library in whose middle a thread may be is about to be freed: every thread that goes on in
  /// its place ends, whoever started it, but not the one that made the guard.
  void ExpectEmpty(const void* place, SIZE_T size);

  /// Closes the thread's handle and watches it no longer.
  void Close(HANDLE thread);

 private:
  void* handler_ = nullptr;
  std::set<DWORD> noted_threads_;
};

}  // namespace kitbay::platform::win32
