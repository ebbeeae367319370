#pragma once

#include <string>

#include "platform/clock.h"

namespace kitbay::fakes {

/// A clock that stands still at the time it was set to. It writes dates in the American format:
/// "11/21/2026 10:15:30 AM", at midnight "11/21/2026".
class FakeClock : public platform::Clock {
 public:
  FakeClock() = default;
  explicit FakeClock(const platform::LocalTime& now) : now_(now) {}

  void SetNow(const platform::LocalTime& now) { now_ = now; }

  platform::LocalTime Now() const override { return now_; }

  std::string GeneralDate(const platform::LocalTime& time) const override {
    const std::string date = std::to_string(time.month) + "/" + std::to_string(time.day) + "/" +
                             std::to_string(time.year);
    if (time.hour == 0 && time.minute == 0 && time.second == 0) {
      return date;
    }
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return date + " " + std::to_string(hour) + ":" + TwoDigits(time.minute) + ":" +
           TwoDigits(time.second) + (time.hour < 12 ? " AM" : " PM");
  }

 private:
  static std::string TwoDigits(int number) {
    return std::string(number < 10 ? 1 : 0, '0') + std::to_string(number);
  }

  platform::LocalTime now_{2026, 11, 21, 10, 15, 30};
};

}  // namespace kitbay::fakes
