#include "install/self_registration.h"

#include <vector>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::install {
namespace {

using base::guarded;
using platform::ExportAddress;

constexpr std::uint32_t kTimeLimitMs = 10000;

// The same text for every spelling of a library's path: in lower case, with one "\" before each
// part, and without "." and "..".
std::string PlaceOf(const std::string& path) {
  std::vector<std::string> parts;
  std::string part;
  for (const char letter : base::ToLower(path) + "\\") {
    if (letter != '\\' && letter != '/') {
      part += letter;
      continue;
    }
    if (part == ".." && parts.size() > 1) {
      parts.pop_back();
    } else if (!part.empty() && part != "." && part != "..") {
      parts.push_back(part);
    }
    part.clear();
  }
  std::string place;
  for (const std::string& each : parts) {
    place.append("\\").append(each);
  }
  return place;
}

}  // namespace

std::int32_t SelfRegistration::DLLRegisterService(const std::string& path, bool register_it) {
  std::int32_t result = kLibraryHasRun;
  guarded(log_, "Kitbay::DLLRegisterService", [&] {
    const std::string key = PlaceOf(path);
    if (timed_out_.contains(key)) {
      result = kLibraryTimedOut;
      throw base::Failure(base::RuntimeError::kPathFileAccessError,
                          path + " did not return in time before");
    }
    std::exception_ptr load_failure;
    libraries_.RunOnOwnThread([&] {
      RunExport(path, register_it ? "DllRegisterServer" : "DllUnregisterServer", result,
                load_failure);
    });
    if (load_failure) {
      // The log belongs to the thread of the user interface.
      base::LogFailure(log_, " Kitbay::Loading of library failed", load_failure);
    }
    if (result == kLibraryTimedOut) {
      timed_out_.insert(key);
    }
  });
  return result;
}

// Runs on a separate thread, because a time-out ends the thread that waited: nothing here may own
// what the end of the thread would leave behind.
void SelfRegistration::RunExport(const std::string& path, const char* name, std::int32_t& result,
                                 std::exception_ptr& load_failure) {
  platform::LibraryHandle library;
  try {
    library = libraries_.Load(path, settings_.InstallFolder);
  } catch (...) {
    load_failure = std::current_exception();
    result = kLibraryNotLoaded;
    return;
  }
  const ExportAddress address = libraries_.FindExport(library, name);
  // Compared with 1, not with 0: a library without the function still gets a thread.
  if (address == ExportAddress{1}) {
    libraries_.Free(library);
    result = kLibraryNotLoaded;
    return;
  }
  const platform::ThreadHandle thread = libraries_.StartThread(address);
  if (thread == platform::ThreadHandle{}) {
    libraries_.Free(library);
    result = kLibraryHasNoThread;
    return;
  }
  if (!libraries_.Wait(thread, kTimeLimitMs)) {
    result = kLibraryTimedOut;
    libraries_.Free(library);
    libraries_.EndThread(libraries_.ExitCode(thread));
  }
  libraries_.Close(thread);
  libraries_.Free(library);
}

bool SelfRegistration::funcRegisterDll(const std::string& folder) {
  return guarded(log_, "Kitbay::funcRegisterDll", [&] {
    for (const std::string& name : session_.libraries) {
      DLLRegisterService(std::string(folder).append("\\").append(name), true);
    }
  });
}

}  // namespace kitbay::install
