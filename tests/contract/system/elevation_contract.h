#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "platform/elevation.h"

namespace kitbay::contract {

/// The rights of a process, and a user who answers the system's question.
class ElevationWorld {
 public:
  virtual ~ElevationWorld() = default;
  virtual platform::Elevation& elevation() = 0;
  virtual void AnswerWith(platform::ElevationAnswer answer) = 0;

  /// How often the user was asked.
  virtual int questions() const = 0;
};

class ElevationContract : public testing::TestWithParam<std::unique_ptr<ElevationWorld> (*)()> {
 protected:
  // One world at a time, because they share the system's question.
  void StartAgain() {
    world_.reset();
    world_ = GetParam()();
  }

  std::unique_ptr<ElevationWorld> world_ = GetParam()();
};

TEST_P(ElevationContract, TheUsersAnswerIsReported) {
  for (const auto answer :
       {platform::ElevationAnswer::kStarted, platform::ElevationAnswer::kDeclined,
        platform::ElevationAnswer::kUnavailable}) {
    StartAgain();
    world_->AnswerWith(answer);
    EXPECT_EQ(world_->elevation().StartWithAdministratorRights(), answer);
    EXPECT_EQ(world_->questions(), 1);
  }
}

TEST_P(ElevationContract, AUserIsAskedOnce) {
  for (const auto answer :
       {platform::ElevationAnswer::kStarted, platform::ElevationAnswer::kDeclined}) {
    StartAgain();
    world_->AnswerWith(answer);
    world_->elevation().StartWithAdministratorRights();
    EXPECT_EQ(world_->elevation().StartWithAdministratorRights(),
              platform::ElevationAnswer::kUnavailable);
    EXPECT_EQ(world_->questions(), 1);
  }
}

TEST_P(ElevationContract, TheQuestionChangesNothingInTheRightsOfTheProcess) {
  const bool has_rights = world_->elevation().HasAdministratorRights();
  world_->AnswerWith(platform::ElevationAnswer::kStarted);
  world_->elevation().StartWithAdministratorRights();
  EXPECT_EQ(world_->elevation().HasAdministratorRights(), has_rights);
}

}  // namespace kitbay::contract
