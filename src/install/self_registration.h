#pragma once

#include <cstdint>
#include <exception>
#include <set>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "install/install_session.h"
#include "platform/libraries.h"

namespace kitbay::install {

/// What `DLLRegisterService` returns.
inline constexpr std::int32_t kLibraryHasRun = 0;       ///< whatever its function returned
inline constexpr std::int32_t kLibraryNotLoaded = 1;    ///< or its function's address is 1
inline constexpr std::int32_t kLibraryHasNoThread = 2;  ///< the system could not create a thread
inline constexpr std::int32_t kLibraryTimedOut = 3;     ///< it did not return within the limit

/// Makes libraries register themselves.
class SelfRegistration {
 public:
  SelfRegistration(base::ErrorLog& log, const base::Settings& settings,
                   platform::Libraries& libraries, const InstallSession& session)
      : log_(log), settings_(settings), libraries_(libraries), session_(session) {}

  /// Loads the library at the full path `path` and makes it register itself, or unregister itself
  /// if `register_it` is false. Libraries that it needs may be in the installation folder, as for
  /// the main client. Waits at most 10 seconds. Returns one of the codes above; also 0 if a
  /// run-time error ended the call. A library that timed out is not loaded again: every later call
  /// for it returns 3 at once.
  std::int32_t DLLRegisterService(const std::string& path, bool register_it);

  /// Registers every library in the session's list, in `folder` (without "\" at its end), whatever
  /// the result of those before it. Returns whether each has been tried.
  bool funcRegisterDll(const std::string& folder);

 private:
  void RunExport(const std::string& path, const char* name, std::int32_t& result,
                 std::exception_ptr& load_failure);

  base::ErrorLog& log_;
  const base::Settings& settings_;
  platform::Libraries& libraries_;
  const InstallSession& session_;
  std::set<std::string> timed_out_;  ///< paths as `PlaceOf` returns them
};

}  // namespace kitbay::install
