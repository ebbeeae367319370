#include "fakes/fake_com_server.h"

#include <utility>

#include "fakes/fake_active_objects.h"

namespace kitbay::fakes {
namespace {

template <typename Service>
using Held = std::shared_ptr<std::unique_ptr<Service>>;

template <typename Service>
Service& Get(const Held<Service>& held) {
  if (!*held) {
    throw base::Failure(kDisconnected, "The object invoked has disconnected from its clients.");
  }
  return **held;
}

template <typename Service>
void EndAll(std::vector<std::weak_ptr<std::unique_ptr<Service>>>& services) {
  for (const auto& service : std::exchange(services, {})) {
    if (const auto held = service.lock()) {
      held->reset();
    }
  }
}

}  // namespace

class FakeComServer::ManagerClient : public platform::ManagerService {
 public:
  explicit ManagerClient(Held<platform::ManagerService> service) : service_(std::move(service)) {}
  void BringToFront() override { Get(service_).BringToFront(); }

 private:
  Held<platform::ManagerService> service_;
};

class FakeComServer::RegistryClient : public platform::RegistryService {
 public:
  explicit RegistryClient(Held<platform::RegistryService> service) : service_(std::move(service)) {}
  void RegisterUrlHandler() override { Get(service_).RegisterUrlHandler(); }
  std::string GetAppDataPath() override { return Get(service_).GetAppDataPath(); }
  std::int32_t ROOT_REGISTRY_KEY() override { return Get(service_).ROOT_REGISTRY_KEY(); }

 private:
  Held<platform::RegistryService> service_;
};

FakeComServer::~FakeComServer() { RevokeClassObjects(); }

void FakeComServer::KeepRegistrationCurrent(platform::ClassesOf whose) {
  registrations.push_back(whose);
  if (registration_failure) {
    throw *registration_failure;
  }
  if (whose == platform::ClassesOf::kMachine && user_ == User::kStandard) {
    throw base::Failure(kAccessDenied, "Access denied.");
  }
  if (class_tables != nullptr) {
    class_tables->AddOwnClass(whose);
  }
}

void FakeComServer::RegisterClassObjects(platform::ServiceFactory& factory) {
  if (class_object_failure) {
    throw *class_object_failure;
  }
  offered = &factory;
}

void FakeComServer::RevokeClassObjects() {
  offered = nullptr;
  EndAll(managers_);
  EndAll(registries_);
}

std::unique_ptr<platform::ManagerService> FakeComServer::CreateManager() {
  auto service =
      std::make_shared<std::unique_ptr<platform::ManagerService>>(Offered().CreateManager());
  managers_.push_back(service);
  return std::make_unique<ManagerClient>(std::move(service));
}

std::unique_ptr<platform::RegistryService> FakeComServer::CreateRegistry() {
  auto service =
      std::make_shared<std::unique_ptr<platform::RegistryService>>(Offered().CreateRegistry());
  registries_.push_back(service);
  return std::make_unique<RegistryClient>(std::move(service));
}

platform::ServiceFactory& FakeComServer::Offered() const {
  if (offered == nullptr) {
    throw base::Failure(base::RuntimeError::kCannotCreateObject);
  }
  return *offered;
}

}  // namespace kitbay::fakes
