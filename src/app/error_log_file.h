#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/error_log.h"
#include "platform/clock.h"
#include "platform/file_system_object.h"

namespace kitbay::app {

/// The error log as a text file, 8-bit, lines ended by CR LF.
class ErrorLogFile : public base::ErrorLog {
 public:
  explicit ErrorLogFile(const platform::Clock& clock) : clock_(clock) {}

  /// Creates the log at `path`, replacing an earlier one, and writes its header. Throws
  /// `base::Failure` on failure; no log is open then.
  void Open(platform::FileSystemObject& file_system, const std::string& path);

  /// Closes the log if it is open. Later entries are dropped.
  void Close();

  std::string TimeText() const override;
  void LogError(const std::string& time_text, const std::string& procedure, std::int32_t number,
                const std::string& description) override;

 private:
  const platform::Clock& clock_;
  std::unique_ptr<platform::TextStream> stream_;
};

}  // namespace kitbay::app
