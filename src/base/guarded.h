#pragma once

#include <exception>
#include <functional>
#include <utility>

#include "base/error_log.h"

namespace kitbay::base {

/// Logs `error` as a failure of `procedure`. An error raised by the log itself is dropped, because
/// there is no other place to report it.
void LogFailure(ErrorLog& log, const char* procedure, const std::exception_ptr& error) noexcept;

/// Runs `body` as the procedure named `procedure`. A failure ends the body, is logged as one entry
/// and goes no further. Returns whether the body ran to its end.
template <typename Body>
bool guarded(ErrorLog& log, const char* procedure, Body&& body) noexcept {
  try {
    std::invoke(std::forward<Body>(body));
    return true;
  } catch (...) {
    LogFailure(log, procedure, std::current_exception());
    return false;
  }
}

}  // namespace kitbay::base
