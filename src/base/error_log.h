#pragma once

#include <cstdint>
#include <string>

namespace kitbay::base {

/// Where every procedure reports its failures.
class ErrorLog {
 public:
  virtual ~ErrorLog() = default;

  /// The current local date and time in the system's general date format.
  virtual std::string TimeText() const = 0;

  /// Appends one entry of four lines. Does nothing while no log is open. Throws `base::Failure`
  /// when the entry cannot be written.
  virtual void LogError(const std::string& time_text, const std::string& procedure,
                        std::int32_t number, const std::string& description) = 0;
};

}  // namespace kitbay::base
