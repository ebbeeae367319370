#include <windows.h>

#include <objbase.h>

#include <memory>
#include <utility>
#include <vector>

#include "kitbay.h"
#include "platform/win32/com/class_factory.h"
#include "platform/win32/com/class_registration.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/counted_object.h"
#include "platform/win32/com/service_objects.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

/// The services that clients hold; they end with the server.
template <typename Service>
class ServedObjects {
 public:
  std::shared_ptr<ServiceLink<Service>> Add(std::unique_ptr<Service> service) {
    std::erase_if(links_, [](const auto& link) { return link.expired(); });
    auto link = std::make_shared<ServiceLink<Service>>(std::move(service));
    links_.push_back(link);
    return link;
  }

  void CutAll() {
    for (const auto& link : std::exchange(links_, {})) {
      if (const auto alive = link.lock()) {
        alive->Cut();
      }
    }
  }

 private:
  std::vector<std::weak_ptr<ServiceLink<Service>>> links_;
};

class LocalServer final : public ComServer {
 public:
  ~LocalServer() override { RevokeClassObjects(); }

  void KeepRegistrationCurrent(ClassesOf whose) override {
    KeepRegistered({.hive = whose == ClassesOf::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER,
                    .kind = ServerRegistration::Kind::kLocalServer,
                    .classes = {{__uuidof(::Manager), L"Kitbay.Manager"},
                                {__uuidof(::Registry), L"Kitbay.Registry"}}});
  }

  void RegisterClassObjects(ServiceFactory& factory) override {
    RevokeClassObjects();
    try {
      Offer(__uuidof(::Manager), [this, &factory](REFIID iid, void** object) {
        const auto manager = Adopt(new ManagerObject(managers_.Add(factory.CreateManager())));
        return manager->QueryInterface(iid, object);
      });
      Offer(__uuidof(::Registry), [this, &factory](REFIID iid, void** object) {
        const auto registry = Adopt(new RegistryObject(registries_.Add(factory.CreateRegistry())));
        return registry->QueryInterface(iid, object);
      });
    } catch (...) {
      RevokeClassObjects();
      throw;
    }
  }

  void RevokeClassObjects() override {
    for (auto& offer : std::exchange(offers_, {})) {
      CoRevokeClassObject(offer.cookie);
      offer.factory->Stop();
    }
    managers_.CutAll();
    registries_.CutAll();
  }

 private:
  struct Offered {
    ComPtr<ClassFactory> factory;
    DWORD cookie;
  };

  void Offer(REFCLSID class_id, ClassFactory::Create create) {
    Offered offer{};
    offer.factory = Adopt(new ClassFactory(std::move(create)));
    Check(CoRegisterClassObject(class_id, offer.factory.Get(), CLSCTX_LOCAL_SERVER,
                                REGCLS_MULTIPLEUSE, &offer.cookie));
    offers_.push_back(std::move(offer));
  }

  std::vector<Offered> offers_;
  ServedObjects<ManagerService> managers_;
  ServedObjects<RegistryService> registries_;
};

}  // namespace

std::unique_ptr<ComServer> MakeComServer() { return std::make_unique<LocalServer>(); }

}  // namespace kitbay::platform::win32
