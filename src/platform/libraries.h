#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kitbay::platform {

/// A loaded library; 0 is none.
struct LibraryHandle {
  std::uintptr_t value = 0;
  friend bool operator==(const LibraryHandle&, const LibraryHandle&) = default;
};

/// A function in a loaded library; 0 is none.
struct ExportAddress {
  std::uintptr_t value = 0;
  friend bool operator==(const ExportAddress&, const ExportAddress&) = default;
};

/// A thread that runs a library's function; 0 is none.
struct ThreadHandle {
  std::uintptr_t value = 0;
  friend bool operator==(const ThreadHandle&, const ThreadHandle&) = default;
};

/// The exit code of a thread that has not ended.
inline constexpr std::uint32_t kNoExitCode = 259;

/// Loads libraries and runs their functions on threads, as the system's single operations.
class Libraries {
 public:
  virtual ~Libraries() = default;

  /// Loads the library at the full path `path` (UTF-8). Its dependencies are searched for only in
  /// its own folder, the program's, the folder `helpers` (unless empty or missing) and the
  /// system's. Throws `base::Failure`: 75 if `path` is not the full path of a file, otherwise the
  /// system's own number and description (126 if the file or a dependency is missing, 193 if it is
  /// not a library).
  virtual LibraryHandle Load(const std::string& path, const std::string& helpers) = 0;

  /// Frees the library, even if a thread still runs in it.
  virtual void Free(LibraryHandle library) = 0;

  /// The address of what the library exports as `name`; none if there is no such export.
  virtual ExportAddress FindExport(LibraryHandle library, const std::string& name) = 0;

  /// Starts a thread on `start`, without an argument; none if the system cannot create one. A
  /// thread that faults, even because it has no function to start on, ends alone.
  virtual ThreadHandle StartThread(ExportAddress start) = 0;

  /// Waits up to `milliseconds` for the thread to end, without dispatching messages to the calling
  /// thread's windows. Returns whether it has ended.
  virtual bool Wait(ThreadHandle thread, std::uint32_t milliseconds) = 0;

  /// The exit code of the thread.
  virtual std::uint32_t ExitCode(ThreadHandle thread) = 0;

  /// Closes the thread's handle; the thread runs on if it has not ended.
  virtual void Close(ThreadHandle thread) = 0;

  /// Ends the calling thread, which `RunOnOwnThread` must have started; its stack is not unwound.
  [[noreturn]] virtual void EndThread(std::uint32_t exit_code) = 0;

  /// Runs `body` on a new thread and waits for it to end, without dispatching messages to the
  /// calling thread's windows. What `body` throws is rethrown to the caller.
  virtual void RunOnOwnThread(const std::function<void()>& body) = 0;
};

}  // namespace kitbay::platform
