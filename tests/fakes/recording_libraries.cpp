#include "fakes/recording_libraries.h"

#include <cctype>
#include <thread>
#include <utility>

#include "fakes/call_text.h"
#include "fakes/windows_path.h"

namespace kitbay::fakes {

using base::Failure;
using platform::ExportAddress;
using platform::LibraryHandle;
using platform::ThreadHandle;

namespace {

constexpr std::int32_t kModuleNotFound = 126;
constexpr std::uint32_t kAccessViolation = 0xC0000005;

/// Ends a separate thread in the middle of its work.
struct EndOfThread {};

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsFullPathOfFile(const std::string& path) {
  if (path.size() < 4 || IsSeparator(path.back())) {
    return false;
  }
  const bool has_drive = std::isalpha(static_cast<unsigned char>(path[0])) != 0 && path[1] == ':' &&
                         IsSeparator(path[2]);
  return has_drive || (IsSeparator(path[0]) && IsSeparator(path[1]));
}

std::string Number(std::uintptr_t number) { return " " + std::to_string(number); }

}  // namespace

LibraryHandle RecordingLibraries::Load(const std::string& path, const std::string& helpers) {
  Record("Load", Bracketed(path) + Bracketed(helpers));
  if (!IsFullPathOfFile(path)) {
    throw Failure(base::RuntimeError::kPathFileAccessError, path);
  }
  const std::string key = ParsePath(path).Key();
  if (const auto unloadable = unloadable_.find(key); unloadable != unloadable_.end()) {
    throw Failure(unloadable->second);
  }
  const auto library = libraries_.find(key);
  const auto needed = needed_.find(key);
  const bool lacks_helper = needed != needed_.end() && needed->second != ParsePath(helpers).Key();
  if (library == libraries_.end() || lacks_helper) {
    throw Failure(kModuleNotFound, "Module not found.");
  }
  loaded_[next_library_] = &library->second;
  return {next_library_++};
}

void RecordingLibraries::Free(LibraryHandle library) {
  Record("Free", Number(library.value));
  loaded_.erase(library.value);
  for (auto& [handle, thread] : threads_) {
    thread.is_freed = thread.is_freed || thread.runs_in == library.value;
  }
}

ExportAddress RecordingLibraries::FindExport(LibraryHandle library, const std::string& name) {
  Record("FindExport", Number(library.value) + Bracketed(name));
  const auto& addresses = loaded_.at(library.value)->addresses;
  const auto address = addresses.find(name);
  return {address == addresses.end() ? 0 : address->second};
}

ThreadHandle RecordingLibraries::StartThread(ExportAddress start) {
  Record("StartThread", Number(start.value));
  if (refuses_threads_) {
    return {};
  }
  Thread& thread = threads_[next_thread_];
  const auto function = functions_.find(start.value);
  thread.function =
      function == functions_.end() ? FakeFunction{kAccessViolation, false} : function->second;
  for (const auto& [handle, library] : loaded_) {
    for (const auto& [name, address] : library->addresses) {
      if (address == start.value) {
        thread.runs_in = handle;
      }
    }
  }
  return {next_thread_++};
}

bool RecordingLibraries::Wait(ThreadHandle thread, std::uint32_t milliseconds) {
  Record("Wait", Number(thread.value) + Number(milliseconds));
  return !threads_.at(thread.value).function.hangs;
}

std::uint32_t RecordingLibraries::ExitCode(ThreadHandle thread) {
  Record("ExitCode", Number(thread.value));
  const FakeFunction& function = threads_.at(thread.value).function;
  return function.hangs ? platform::kNoExitCode : function.exit_code;
}

void RecordingLibraries::Close(ThreadHandle thread) {
  Record("Close", Number(thread.value));
  threads_.erase(thread.value);
}

void RecordingLibraries::EndThread(std::uint32_t exit_code) {
  Record("EndThread", Number(exit_code));
  throw EndOfThread{};
}

void RecordingLibraries::RunOnOwnThread(const std::function<void()>& body) {
  Record("RunOnOwnThread");
  std::exception_ptr failure;
  std::thread([&] {
    try {
      body();
    } catch (const EndOfThread&) {  // NOLINT(bugprone-empty-catch): the thread has ended
    } catch (...) {
      failure = std::current_exception();
    }
  }).join();
  Record("Own thread ends");
  if (failure) {
    std::rethrow_exception(failure);
  }
}

void RecordingLibraries::Add(const std::string& path,
                             const std::map<std::string, FakeFunction>& functions) {
  Library& library = libraries_[ParsePath(path).Key()];
  for (const auto& [name, function] : functions) {
    library.addresses[name] = next_address_;
    functions_[next_address_++] = function;
  }
}

void RecordingLibraries::Need(const std::string& path, const std::string& helpers) {
  needed_[ParsePath(path).Key()] = ParsePath(helpers).Key();
}

void RecordingLibraries::AddUnloadable(const std::string& path, const Failure& failure) {
  unloadable_.insert_or_assign(ParsePath(path).Key(), failure);
}

void RecordingLibraries::SetAddress(const std::string& path, const std::string& name,
                                    std::uintptr_t address) {
  libraries_[ParsePath(path).Key()].addresses[name] = address;
}

void RecordingLibraries::Fail(const std::string& call, const Failure& failure) {
  failures_.insert_or_assign(call, failure);
}

void RecordingLibraries::LetReturn() {
  for (auto& [handle, thread] : threads_) {
    if (thread.function.hangs) {
      thread.function = {thread.is_freed ? kAccessViolation : thread.function.exit_code, false};
    }
  }
}

void RecordingLibraries::Record(const std::string& call, const std::string& arguments) {
  calls_.push_back(call + arguments);
  if (const auto failure = failures_.find(call); failure != failures_.end()) {
    throw Failure(failure->second);
  }
}

}  // namespace kitbay::fakes
