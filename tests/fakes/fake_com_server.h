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

  /// Ends the objects that clients hold as well.
  void RevokeClassObjects() override;

  /// What a client gets; fails with 429 while no class objects are registered.
  std::unique_ptr<platform::ManagerService> CreateManager();
  std::unique_ptr<platform::RegistryService> CreateRegistry();

  /// The machine's classes are refused to a standard user (-2147024891).
  void SetUser(User user) { user_ = user; }

  /// Whose classes were brought up to date, or tried to be, in order.
  std::vector<platform::ClassesOf> registrations;

  /// Where what was registered is found; null for nowhere.
  FakeActiveObjects* class_tables = nullptr;

  /// The factory of the classes on offer; null while there are none.
  platform::ServiceFactory* offered = nullptr;

  /// What the next calls fail with.
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

/// A previous-instance test that a test tells whether there is one.
class FakeInstanceMark : public platform::InstanceMark {
 public:
  bool PreviousInstanceExists() override {
    if (!answer_) answer_ = previous_instance;
    return *answer_;
  }
  void Release() override { answer_.reset(); }

  bool previous_instance = false;

  /// Whether this instance is the first by now.
  bool is_held() const { return answer_ == false; }

 private:
  std::optional<bool> answer_;
};

}  // namespace kitbay::fakes
