#pragma once

#include <cstdint>
#include <exception>
#include <map>
#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/libraries.h"

namespace kitbay::fakes {

/// What happens to a thread that runs a function.
struct FakeFunction {
  std::uint32_t exit_code = 0;
  bool hangs = false;
};

/// Libraries that a test adds, whose functions end or hang as the test specifies; records its
/// calls. Addresses and handles are small numbers, counted per kind.
class RecordingLibraries : public platform::Libraries {
 public:
  platform::LibraryHandle Load(const std::string& path, const std::string& helpers) override;
  void Free(platform::LibraryHandle library) override;
  platform::ExportAddress FindExport(platform::LibraryHandle library,
                                     const std::string& name) override;
  platform::ThreadHandle StartThread(platform::ExportAddress start) override;
  bool Wait(platform::ThreadHandle thread, std::uint32_t milliseconds) override;
  std::uint32_t ExitCode(platform::ThreadHandle thread) override;
  void Close(platform::ThreadHandle thread) override;
  [[noreturn]] void EndThread(std::uint32_t exit_code) override;
  void RunOnOwnThread(const std::function<void()>& body) override;

  // For tests to arrange.

  /// Adds a library at `path`.
  void Add(const std::string& path, const std::map<std::string, FakeFunction>& functions);

  /// The library at `path` depends on another one, which lies in the folder `helpers`.
  void Need(const std::string& path, const std::string& helpers);

  /// Adds a file at `path` that is not a library, or a library that cannot be loaded for another
  /// reason.
  void AddUnloadable(const std::string& path, const base::Failure& failure);

  /// The function `name` of the library at `path` is at `address`.
  void SetAddress(const std::string& path, const std::string& name, std::uintptr_t address);

  /// The system cannot create threads.
  void RefuseThreads() { refuses_threads_ = true; }

  /// From now on, the call named `call` throws `failure`.
  void Fail(const std::string& call, const base::Failure& failure);

  /// Makes every hanging function return; a thread whose library was freed has nothing to return
  /// to.
  void LetReturn();

  // For tests to inspect.

  /// Every call in order, its name and then its arguments, numbers in decimal and texts in "[" and
  /// "]": "RunOnOwnThread", "Load [path] [helpers]", "FindExport 1 [name]", "StartThread 4097",
  /// "Wait 1 10000", "ExitCode 1", "Close 1", "Free 1", "EndThread 259", and "Own thread ends" when
  /// it has ended.
  const std::vector<std::string>& calls() const { return calls_; }

  /// How many libraries are loaded, and how many threads are not closed.
  std::size_t loaded() const { return loaded_.size(); }
  std::size_t threads() const { return threads_.size(); }

 private:
  struct Library {
    std::map<std::string, std::uintptr_t> addresses;
  };

  struct Thread {
    FakeFunction function;
    std::uintptr_t runs_in = 0;  ///< handle of the library that it runs in
    bool is_freed = false;       ///< whether that library was freed
  };

  void Record(const std::string& call, const std::string& arguments = {});

  std::map<std::string, Library> libraries_;          ///< by `WindowsPath::Key`
  std::map<std::string, std::string> needed_;         ///< folder by library, `WindowsPath::Key`
  std::map<std::string, base::Failure> unloadable_;   ///< by `WindowsPath::Key`
  std::map<std::uintptr_t, FakeFunction> functions_;  ///< by address
  std::map<std::uintptr_t, const Library*> loaded_;   ///< by handle
  std::map<std::uintptr_t, Thread> threads_;          ///< by handle
  std::map<std::string, base::Failure> failures_;     ///< by the call's name
  std::uintptr_t next_address_ = 4097;
  std::uintptr_t next_library_ = 1;
  std::uintptr_t next_thread_ = 1;
  bool refuses_threads_ = false;
  std::vector<std::string> calls_;
};

}  // namespace kitbay::fakes
