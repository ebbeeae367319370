#pragma once

#include <string>

namespace kitbay::platform {

/// A local calendar date and wall-clock time.
struct LocalTime {
  int year = 0;
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// The system's clock and its way of writing dates.
class Clock {
 public:
  virtual ~Clock() = default;

  virtual LocalTime Now() const = 0;

  /// `time` in the user's general date format: the date alone at midnight, otherwise date and time.
  virtual std::string GeneralDate(const LocalTime& time) const = 0;
};

}  // namespace kitbay::platform
