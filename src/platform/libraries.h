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

/// A thread on a library's function; 0 is none.
struct ThreadHandle {
  std::uintptr_t value = 0;
  friend bool operator==(const ThreadHandle&, const ThreadHandle&) = default;
};

/// The exit code of a thread that has not ended.
inline constexpr std::uint32_t kNoExitCode = 259;

/// Loads libraries and runs their functions on threads: the system's own operations, one by one.
class Libraries {
 public:
  virtual ~Libraries() = default;

  /// Loads the library at the full path `path` (UTF-8). What it depends on is looked for in its own
  /// folder, the program's, the folder `helpers` unless that is empty or not there, and the
  /// system's, nowhere else. Throws `base::Failure`: 75 when `path` is not the full path of a file,
  /// else with the system's own number and description (126 when the file or a library that it
  /// depends on is missing, 193 when it is no library).
  virtual LibraryHandle Load(const std::string& path, const std::string& helpers) = 0;

  /// Lets go of the library, whether or not a thread still runs in it.
  virtual void Free(LibraryHandle library) = 0;

  /// The address of what the library exports as `name`; none when it exports no such thing.
  virtual ExportAddress FindExport(LibraryHandle library, const std::string& name) = 0;

  /// Starts a thread on `start`, without an argument; none when the system cannot make one. A
  /// thread that faults, be it for lack of a function to start on, ends and nothing else.
  virtual ThreadHandle StartThread(ExportAddress start) = 0;

  /// Waits until the thread has ended, but no longer than `milliseconds`, without letting the
  /// calling thread's windows work. Returns whether it has ended.
  virtual bool Wait(ThreadHandle thread, std::uint32_t milliseconds) = 0;

  /// The exit code of the thread.
  virtual std::uint32_t ExitCode(ThreadHandle thread) = 0;

  /// Lets go of the thread, which runs on if it has not ended.
  virtual void Close(ThreadHandle thread) = 0;

  /// Ends the calling thread, which `RunOnOwnThread` must have made; nothing on its stack is
  /// cleaned up.
  [[noreturn]] virtual void EndThread(std::uint32_t exit_code) = 0;

  /// Runs `body` on a thread made for it and waits for its end, without letting the calling
  /// thread's windows work. What `body` throws comes back to the caller.
  virtual void RunOnOwnThread(const std::function<void()>& body) = 0;
};

}  // namespace kitbay::platform
