#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "base/failure.h"
#include "fakes/fake_active_objects.h"
#include "fakes/user.h"
#include "platform/com_server.h"
#include "platform/instance_mark.h"
#include "platform/services.h"

namespace kitbay::fakes {

/// A COM server whose outside world is the test: it creates the program's objects as a client
/// would.
class FakeComServer : public platform::ComServer {
 public:
  ~FakeComServer() override;

  void KeepRegistrationCurrent(platform::ClassesOf whose) override;
  void RegisterClassObjects(platform::ServiceFactory& factory) override;

  /// Also ends the objects that clients hold.
  void RevokeClassObjects() override;

  /// What a client gets; fails with 429 while no class objects are registered.
  std::unique_ptr<platform::ManagerService> CreateManager();
  std::unique_ptr<platform::RegistryService> CreateRegistry();

  /// A standard user is refused the machine's classes (-2147024891).
  void SetUser(User user) { user_ = user; }

  /// Whose classes were registered, or attempted to be, in order.
  std::vector<platform::ClassesOf> registrations;

  /// Where registered classes are found; null for nowhere.
  FakeActiveObjects* class_tables = nullptr;

  /// The factory of the classes on offer; null if there are none.
  platform::ServiceFactory* offered = nullptr;

  /// The failures of the next calls.
  std::optional<base::Failure> registration_failure;
  std::optional<base::Failure> class_object_failure;

 private:
  class ManagerClient;
  class RegistryClient;

  platform::ServiceFactory& Offered() const;

  User user_ = User::kStandard;
  std::vector<std::weak_ptr<std::unique_ptr<platform::ManagerService>>> managers_;
  std::vector<std::weak_ptr<std::unique_ptr<platform::RegistryService>>> registries_;
};

/// A previous-instance test whose answer the test sets.
class FakeInstanceMark : public platform::InstanceMark {
 public:
  bool PreviousInstanceExists() override {
    if (!answer_) {
      answer_ = previous_instance;
    }
    return *answer_;
  }
  void Release() override { answer_.reset(); }

  bool previous_instance = false;

  /// Whether this instance is the first.
  bool is_held() const { return answer_ == false; }

 private:
  std::optional<bool> answer_;
};

}  // namespace kitbay::fakes
