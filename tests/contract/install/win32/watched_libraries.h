#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/libraries.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// The system's own libraries, with shorter waits and with the remaining threads open to
/// inspection.
class WatchedLibraries : public platform::Libraries {
 public:
  /// Waits no longer than `milliseconds` for any thread.
  void SetPatience(std::uint32_t milliseconds) { patience_ = milliseconds; }

  /// How long each thread would have been waited for without that patience.
  const std::vector<std::uint32_t>& limits() const { return limits_; }

  /// What the threads that ended in time returned.
  const std::vector<std::uint32_t>& exit_codes() const { return exit_codes_; }

  /// The thread that was started last.
  platform::ThreadHandle last_thread() const { return last_thread_; }

  /// The library that was loaded last.
  platform::LibraryHandle last_library() const { return last_library_; }

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

 private:
  std::unique_ptr<platform::Libraries> real_ = platform::win32::MakeLibraries();
  std::uint32_t patience_ = UINT32_MAX;
  std::vector<std::uint32_t> limits_;
  std::vector<std::uint32_t> exit_codes_;
  platform::ThreadHandle last_thread_;
  platform::LibraryHandle last_library_;
};

}  // namespace kitbay::contract
