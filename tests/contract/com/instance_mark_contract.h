#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "platform/instance_mark.h"

namespace kitbay::contract {

/// The mark of one instance, and another instance that starts and ends.
class InstanceMarkWorld {
 public:
  virtual ~InstanceMarkWorld() = default;
  virtual platform::InstanceMark& mark() = 0;
  virtual void StartOther() = 0;
  virtual void EndOther() = 0;
};

class InstanceMarkContract
    : public testing::TestWithParam<std::unique_ptr<InstanceMarkWorld> (*)()> {
 protected:
  std::unique_ptr<InstanceMarkWorld> world_ = GetParam()();
};

TEST_P(InstanceMarkContract, TheFirstInstanceStaysTheFirst) {
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
  world_->StartOther();
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
}

TEST_P(InstanceMarkContract, TheSecondInstanceStaysTheSecond) {
  world_->StartOther();
  EXPECT_TRUE(world_->mark().PreviousInstanceExists());
  world_->EndOther();
  EXPECT_TRUE(world_->mark().PreviousInstanceExists());
}

TEST_P(InstanceMarkContract, AnInstanceThatHasEndedIsNotAPreviousOne) {
  world_->StartOther();
  world_->EndOther();
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
}

TEST_P(InstanceMarkContract, AReleasedMarkCanBeTakenByAnother) {
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
  world_->mark().Release();
  world_->StartOther();
  EXPECT_TRUE(world_->mark().PreviousInstanceExists());
}

TEST_P(InstanceMarkContract, AReleasedMarkThatNobodyTookIsTakenAgain) {
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
  world_->mark().Release();
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
  world_->StartOther();
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
}

TEST_P(InstanceMarkContract, ASecondInstanceDoesNotKeepTheMark) {
  world_->StartOther();
  EXPECT_TRUE(world_->mark().PreviousInstanceExists());
  world_->EndOther();
  world_->mark().Release();
  EXPECT_FALSE(world_->mark().PreviousInstanceExists());
}

}  // namespace kitbay::contract
