#include "app/manager_registration.h"

#include "fake_program.h"
#include "fakes/recording_error_log.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A manager that reports its destruction.
class MortalManager : public platform::ManagerService {
 public:
  explicit MortalManager(bool& gone) : gone_(gone) {}
  ~MortalManager() override { gone_ = true; }
  void BringToFront() override {}

 private:
  bool& gone_;
};

class ManagerRegistrationTest : public ::testing::Test {
 protected:
  void Publish() { registration_.Publish(std::make_unique<MortalManager>(gone_)); }

  bool gone_ = false;
  fakes::RecordingErrorLog log_;
  fakes::FakeActiveObjects objects_;
  ManagerRegistration registration_{log_, objects_};
};

TEST_F(ManagerRegistrationTest, LooksTheClassUpByItsProgIdAndEntersTheObject) {
  Publish();
  EXPECT_THAT(objects_.calls,
              ElementsAre("ClassIdFromProgId Kitbay.Manager", "RegisterActiveObject"));
  EXPECT_EQ(objects_.entry_count(), 1U);
  EXPECT_FALSE(gone_);
}

TEST_F(ManagerRegistrationTest, WithoutAClassIdentifierTheObjectIsKeptUnregistered) {
  objects_.classes.clear();
  Publish();
  EXPECT_THAT(objects_.calls, ElementsAre("ClassIdFromProgId Kitbay.Manager"));
  EXPECT_FALSE(gone_);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ManagerRegistrationTest, ARefusedEntryIsIgnored) {
  objects_.table_refuses = true;
  Publish();
  EXPECT_EQ(objects_.entry_count(), 0U);
  EXPECT_FALSE(gone_);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ManagerRegistrationTest, WindupWithdrawsTheEntryThenCutsTheClientsOffAndDropsTheObject) {
  Publish();
  const auto client = objects_.GetActive("Kitbay.Manager");
  objects_.calls.clear();
  registration_.Windup();
  EXPECT_THAT(objects_.calls, ElementsAre("RevokeActiveObject 1", "DisconnectObject"));
  EXPECT_EQ(objects_.entry_count(), 0U);
  EXPECT_TRUE(gone_);
  EXPECT_THROW(client->BringToFront(), base::Failure);
}

TEST_F(ManagerRegistrationTest, RegistrationIsWeakAndKeepsNothingAlive) {
  Publish();
  const auto client = objects_.GetActive("Kitbay.Manager");
  registration_.Windup();
  EXPECT_TRUE(gone_);
}

TEST_F(ManagerRegistrationTest, WindupRevokesCookieZeroAndStillDropsTheObject) {
  objects_.table_refuses = true;
  Publish();
  objects_.calls.clear();
  registration_.Windup();
  EXPECT_THAT(objects_.calls, ElementsAre("RevokeActiveObject 0", "DisconnectObject"));
  EXPECT_TRUE(gone_);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ManagerRegistrationTest, WindupWithoutAnObjectRevokesCookieZero) {
  registration_.Windup();
  EXPECT_THAT(objects_.calls, ElementsAre("RevokeActiveObject 0"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

/// A table whose connections cannot be closed.
class StubbornObjects : public fakes::FakeActiveObjects {
 public:
  void DisconnectObject(platform::ManagerService& /*object*/) override {
    throw base::Failure(-2147467259, "Unspecified error");
  }
};

TEST(ManagerRegistrationFailure, IsLoggedAsWindup) {
  fakes::RecordingErrorLog log;
  StubbornObjects objects;
  ManagerRegistration registration(log, objects);
  bool gone = false;
  registration.Publish(std::make_unique<MortalManager>(gone));
  registration.Windup();
  EXPECT_THAT(log.entries,
              ElementsAre(fakes::Entry("Kitbay::Windup", -2147467259, "Unspecified error")));
}

}  // namespace
}  // namespace kitbay::app
