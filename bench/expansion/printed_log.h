#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/error_log.h"

namespace kitbay::bench {

/// Prints its entries; one of them ends the run as failed, because what is measured must work.
class PrintedLog : public base::ErrorLog {
 public:
  std::string TimeText() const override { return {}; }
  void LogError(const std::string& /*time_text*/, const std::string& procedure, std::int32_t number,
                const std::string& description) override {
    std::fprintf(stderr, "%s: %d %s\n", procedure.c_str(), static_cast<int>(number),
                 description.c_str());
    has_entries = true;
  }

  bool has_entries = false;
};

}  // namespace kitbay::bench
