#pragma once

#include "fakes/user.h"
#include "platform/elevation.h"

namespace kitbay::fakes {

/// The rights of a user; by default a standard user who declines.
class FakeElevation : public platform::Elevation {
 public:
  bool HasAdministratorRights() const override { return user_ == User::kAdministrator; }

  platform::ElevationAnswer StartWithAdministratorRights() override {
    if (questions > 0) {
      return platform::ElevationAnswer::kUnavailable;
    }
    ++questions;
    return answer;
  }

  void SetUser(User user) { user_ = user; }

  /// The answer to the first question.
  platform::ElevationAnswer answer = platform::ElevationAnswer::kDeclined;

  int questions = 0;

 private:
  User user_ = User::kStandard;
};

}  // namespace kitbay::fakes
