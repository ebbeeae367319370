#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "contract/com/recording_services.h"
#include "platform/com_server.h"

namespace kitbay::contract {

/// A COM server, and one outside client.
class ComServerWorld {
 public:
  virtual ~ComServerWorld() = default;
  virtual platform::ComServer& server() = 0;

  /// The client creates an object and keeps it. Returns 0 or the number of its failure.
  virtual std::int32_t ClientCreates(const std::string& prog_id) = 0;

  /// The client calls a member of its object. Returns the result as text, or "failure " and its
  /// number.
  virtual std::string ClientCalls(const std::string& member) = 0;
  virtual void ClientLetsGo() = 0;
};

class ComServerContract : public testing::TestWithParam<std::unique_ptr<ComServerWorld> (*)()> {
 protected:
  RecordingServices services_;
  std::unique_ptr<ComServerWorld> world_ = GetParam()();
};

TEST_P(ComServerContract, AClientOutsideCreatesARegistry) {
  world_->server().RegisterClassObjects(services_);
  ASSERT_EQ(world_->ClientCreates("Kitbay.Registry"), 0);
  EXPECT_EQ(world_->ClientCalls("RegisterUrlHandler"), "");
  EXPECT_EQ(world_->ClientCalls("GetAppDataPath"), "C:\\users\\Zoë\\数据");
  EXPECT_EQ(world_->ClientCalls("ROOT_REGISTRY_KEY"), "-2147483644");
  world_->ClientLetsGo();
  EXPECT_EQ(services_.calls, "CreateRegistry RegisterUrlHandler ~Registry ");
}

TEST_P(ComServerContract, AClientOutsideCreatesAManager) {
  world_->server().RegisterClassObjects(services_);
  ASSERT_EQ(world_->ClientCreates("Kitbay.Manager"), 0);
  EXPECT_EQ(world_->ClientCalls("BringToFront"), "");
  EXPECT_EQ(services_.calls, "CreateManager BringToFront ");
}

TEST_P(ComServerContract, WithoutClassObjectsNothingIsCreated) {
  world_->server().RegisterClassObjects(services_);
  world_->server().RevokeClassObjects();
  EXPECT_EQ(world_->ClientCreates("Kitbay.Registry"), kCannotCreateObject);
  EXPECT_EQ(services_.calls, "");
}

TEST_P(ComServerContract, ClassObjectsCanBeOfferedAgain) {
  world_->server().RegisterClassObjects(services_);
  world_->server().RevokeClassObjects();
  world_->server().RegisterClassObjects(services_);
  EXPECT_EQ(world_->ClientCreates("Kitbay.Registry"), 0);
}

TEST_P(ComServerContract, ObjectsEndWithTheirServer) {
  world_->server().RegisterClassObjects(services_);
  ASSERT_EQ(world_->ClientCreates("Kitbay.Registry"), 0);
  world_->server().RevokeClassObjects();
  EXPECT_EQ(services_.calls, "CreateRegistry ~Registry ");
  EXPECT_EQ(world_->ClientCalls("GetAppDataPath"), "failure -2147417848");
}

}  // namespace kitbay::contract
