#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "base/error_log.h"

namespace kitbay::fuzz {

/// An input contains two files, with a line "=====" between them.
inline std::pair<std::string, std::string> TwoFiles(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kLine = "\n=====\n";
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t line = bytes.find(kLine);
  if (line == std::string_view::npos) {
    return {std::string(bytes), std::string(bytes)};
  }
  return {std::string(bytes.substr(0, line)), std::string(bytes.substr(line + kLine.size()))};
}

/// Ends the run as a finding.
[[noreturn]] inline void Fail(const std::string& why) {
  std::fprintf(stderr, "fuzz: %s\n", why.c_str());
  std::abort();
}

inline void Demand(bool holds, const char* what) {
  if (!holds) {
    Fail(what);
  }
}

/// A log in which only failures with these numbers may appear.
class ExpectingLog : public base::ErrorLog {
 public:
  explicit ExpectingLog(std::set<std::int32_t> expected) : expected_(std::move(expected)) {}

  std::string TimeText() const override { return {}; }
  void LogError(const std::string& /*time_text*/, const std::string& procedure, std::int32_t number,
                const std::string& description) override {
    if (!expected_.contains(number)) {
      Fail(procedure + " logged " + std::to_string(number) + ": " + description);
    }
  }

 private:
  std::set<std::int32_t> expected_;
};

}  // namespace kitbay::fuzz
