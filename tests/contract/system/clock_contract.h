#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>

#include "platform/clock.h"

namespace kitbay::contract {

/// A clock to test, for a user with American date formats.
class ClockWorld {
 public:
  virtual ~ClockWorld() = default;
  virtual platform::Clock& clock() = 0;

  /// The current time from another source.
  virtual platform::LocalTime WallClock() const = 0;
};

class ClockContract : public testing::TestWithParam<std::unique_ptr<ClockWorld> (*)()> {
 protected:
  std::unique_ptr<ClockWorld> world_ = GetParam()();
};

inline auto InOrder(const platform::LocalTime& time) {
  return std::tuple(time.year, time.month, time.day, time.hour, time.minute, time.second);
}

TEST_P(ClockContract, NowIsTheLocalTime) {
  const platform::LocalTime before = world_->WallClock();
  const platform::LocalTime now = world_->clock().Now();
  const platform::LocalTime after = world_->WallClock();
  EXPECT_LE(InOrder(before), InOrder(now));
  EXPECT_LE(InOrder(now), InOrder(after));
}

TEST_P(ClockContract, GeneralDateIsDateAndTime) {
  const auto date = [&](const platform::LocalTime& time) {
    return world_->clock().GeneralDate(time);
  };
  EXPECT_EQ(date({2026, 11, 21, 10, 15, 30}), "11/21/2026 10:15:30 AM");
  EXPECT_EQ(date({2026, 1, 2, 13, 4, 5}), "1/2/2026 1:04:05 PM");
  EXPECT_EQ(date({2026, 12, 31, 23, 59, 59}), "12/31/2026 11:59:59 PM");
  EXPECT_EQ(date({2024, 2, 29, 12, 0, 0}), "2/29/2024 12:00:00 PM");
  EXPECT_EQ(date({2026, 11, 21, 0, 0, 1}), "11/21/2026 12:00:01 AM");
}

TEST_P(ClockContract, GeneralDateAtMidnightIsTheDateAlone) {
  EXPECT_EQ(world_->clock().GeneralDate({2026, 3, 4, 0, 0, 0}), "3/4/2026");
}

}  // namespace kitbay::contract
