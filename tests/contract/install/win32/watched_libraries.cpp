#include "contract/install/win32/watched_libraries.h"

#include <algorithm>
#include <cstdlib>

namespace kitbay::contract {

using platform::ExportAddress;
using platform::LibraryHandle;
using platform::ThreadHandle;

LibraryHandle WatchedLibraries::Load(const std::string& path, const std::string& helpers) {
  last_library_ = real_->Load(path, helpers);
  return last_library_;
}

void WatchedLibraries::Free(LibraryHandle library) { real_->Free(library); }

ExportAddress WatchedLibraries::FindExport(LibraryHandle library, const std::string& name) {
  return real_->FindExport(library, name);
}

ThreadHandle WatchedLibraries::StartThread(ExportAddress start) {
  last_thread_ = real_->StartThread(start);
  return last_thread_;
}

bool WatchedLibraries::Wait(ThreadHandle thread, std::uint32_t milliseconds) {
  limits_.push_back(milliseconds);
  const bool has_ended = real_->Wait(thread, std::min(milliseconds, patience_));
  if (has_ended) {
    exit_codes_.push_back(real_->ExitCode(thread));
  }
  return has_ended;
}

std::uint32_t WatchedLibraries::ExitCode(ThreadHandle thread) { return real_->ExitCode(thread); }

void WatchedLibraries::Close(ThreadHandle thread) { real_->Close(thread); }

void WatchedLibraries::EndThread(std::uint32_t exit_code) {
  real_->EndThread(exit_code);
  std::abort();  // the compiler cannot tell that a virtual function never returns
}

void WatchedLibraries::RunOnOwnThread(const std::function<void()>& body) {
  real_->RunOnOwnThread(body);
}

}  // namespace kitbay::contract
