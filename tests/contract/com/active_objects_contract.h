#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/com/recording_services.h"
#include "platform/active_objects.h"

namespace kitbay::contract {

/// The system's tables, and one outside client.
class ActiveObjectsWorld {
 public:
  virtual ~ActiveObjectsWorld() = default;
  virtual platform::ActiveObjects& objects() = 0;

  /// Each returns 0 or the number of the client's failure. The client keeps what it gets.
  virtual std::int32_t ClientGets(const std::string& prog_id) = 0;
  virtual std::int32_t ClientBringsToFront() = 0;
  virtual void ClientLetsGo() = 0;
};

class ActiveObjectsContract
    : public testing::TestWithParam<std::unique_ptr<ActiveObjectsWorld> (*)()> {
 protected:
  platform::ActiveObjects& objects() { return world_->objects(); }
  platform::ClassId ManagerClass() {
    return objects().ClassIdFromProgId("Kitbay.Manager").value_or(platform::ClassId{});
  }

  /// Registers the manager; at the end of the test it is no longer in the table.
  std::optional<std::uint32_t> Register() {
    const auto cookie = objects().RegisterActiveObject(manager_, ManagerClass());
    cookies_.push_back(cookie.value_or(0));
    return cookie;
  }
  void TearDown() override {
    for (const std::uint32_t cookie : cookies_) {
      objects().RevokeActiveObject(cookie);
    }
  }

  // The manager outlives its entry in the table.
  CountingManager manager_;
  std::unique_ptr<ActiveObjectsWorld> world_ = GetParam()();
  std::vector<std::uint32_t> cookies_;
};

TEST_P(ActiveObjectsContract, AProgIdNamesItsClass) {
  const auto known = objects().ClassIdFromProgId("Kitbay.Manager");
  ASSERT_TRUE(known.has_value());
  EXPECT_NE(*known, platform::ClassId{});
  EXPECT_EQ(objects().ClassIdFromProgId("Kitbay.Manager"), known);
  EXPECT_EQ(objects().ClassIdFromProgId("Kitbay.Unknown"), std::nullopt);
  EXPECT_EQ(objects().ClassIdFromProgId(""), std::nullopt);
}

TEST_P(ActiveObjectsContract, AClientOutsideFindsTheRegisteredManager) {
  const auto cookie = Register();
  ASSERT_TRUE(cookie.has_value());
  EXPECT_NE(*cookie, 0U);
  EXPECT_EQ(world_->ClientGets("Kitbay.Manager"), 0);
  EXPECT_EQ(world_->ClientBringsToFront(), 0);
  EXPECT_EQ(world_->ClientBringsToFront(), 0);
  EXPECT_EQ(manager_.calls, 2);
}

TEST_P(ActiveObjectsContract, TheManagerIsFoundAgainAfterAClientHasLetItGo) {
  Register();
  for (int client = 1; client <= 3; ++client) {
    EXPECT_EQ(world_->ClientGets("Kitbay.Manager"), 0) << "client " << client;
    EXPECT_EQ(world_->ClientBringsToFront(), 0) << "client " << client;
    world_->ClientLetsGo();
  }
  EXPECT_EQ(manager_.calls, 3);
}

TEST_P(ActiveObjectsContract, WithoutARegisteredManagerNothingIsFound) {
  EXPECT_EQ(world_->ClientGets("Kitbay.Manager"), kCannotCreateObject);
  EXPECT_EQ(world_->ClientGets("Kitbay.Unknown"), kCannotCreateObject);
}

TEST_P(ActiveObjectsContract, ARevokedManagerIsNoLongerFound) {
  const auto cookie = Register();
  ASSERT_TRUE(cookie.has_value());
  EXPECT_EQ(objects().RevokeActiveObject(*cookie), 0);
  EXPECT_EQ(world_->ClientGets("Kitbay.Manager"), kCannotCreateObject);
  EXPECT_EQ(objects().RevokeActiveObject(*cookie), kInvalidArgument);
}

TEST_P(ActiveObjectsContract, RevokingCookieZeroFails) {
  EXPECT_EQ(objects().RevokeActiveObject(0), kInvalidArgument);
}

TEST_P(ActiveObjectsContract, ADisconnectedClientIsToldSo) {
  const auto cookie = Register();
  ASSERT_TRUE(cookie.has_value());
  ASSERT_EQ(world_->ClientGets("Kitbay.Manager"), 0);
  ASSERT_EQ(objects().RevokeActiveObject(*cookie), 0);
  objects().DisconnectObject(manager_);
  EXPECT_EQ(world_->ClientBringsToFront(), kDisconnected);
  EXPECT_EQ(manager_.calls, 0);
}

TEST_P(ActiveObjectsContract, AManagerThatNobodyHoldsCanBeDisconnected) {
  objects().DisconnectObject(manager_);
  ASSERT_TRUE(Register().has_value());
  EXPECT_EQ(world_->ClientGets("Kitbay.Manager"), 0);
  EXPECT_EQ(world_->ClientBringsToFront(), 0);
}

TEST_P(ActiveObjectsContract, AFailureOfTheManagerReachesTheClient) {
  manager_.failure.emplace(base::RuntimeError::kInvalidProcedureCall);
  ASSERT_TRUE(Register().has_value());
  ASSERT_EQ(world_->ClientGets("Kitbay.Manager"), 0);
  EXPECT_EQ(world_->ClientBringsToFront(), 5);
}

}  // namespace kitbay::contract
