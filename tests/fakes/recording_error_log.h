#pragma once

#include <cstdint>
#include <exception>
#include <ostream>
#include <string>
#include <vector>

#include "base/error_log.h"

namespace kitbay::fakes {

/// One log entry.
struct LogEntry {
  std::string time_text;
  std::string procedure;
  std::int32_t number = 0;
  std::string description;

  friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

inline void PrintTo(const LogEntry& entry, std::ostream* out) {
  *out << "{" << entry.time_text << " | " << entry.procedure << " | " << entry.number << " | "
       << entry.description << "}";
}

/// A log that keeps its entries in memory and always returns the same time. It can be made to fail:
/// writing then throws `failure` and keeps no entry, and reading the time throws `time_failure`.
class RecordingErrorLog : public base::ErrorLog {
 public:
  static constexpr const char* kTimeText = "3/14/2005 9:26:53 AM";

  std::string TimeText() const override {
    if (time_failure) {
      std::rethrow_exception(time_failure);
    }
    return kTimeText;
  }

  void LogError(const std::string& time_text, const std::string& procedure, std::int32_t number,
                const std::string& description) override {
    if (failure) {
      std::rethrow_exception(failure);
    }
    entries.push_back({time_text, procedure, number, description});
  }

  std::vector<LogEntry> entries;
  std::exception_ptr failure;       ///< what `LogError` throws; empty to keep entries
  std::exception_ptr time_failure;  ///< what `TimeText` throws; empty for the fixed time
};

/// The entry that `procedure` makes in a `RecordingErrorLog` for `number` and `description`.
inline LogEntry Entry(const std::string& procedure, std::int32_t number,
                      const std::string& description) {
  return {RecordingErrorLog::kTimeText, procedure, number, description};
}

/// The description of failure 91, for an element or object that does not exist.
inline constexpr const char* kNotSet = "Object variable or With block variable not set";

}  // namespace kitbay::fakes
