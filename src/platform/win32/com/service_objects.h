#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <utility>

#include "kitbay.h"
#include "platform/services.h"
#include "platform/win32/com/dispatch_object.h"

namespace kitbay::platform::win32 {

/// The service behind a COM object; it may end before the object's clients do.
template <typename Service>
class ServiceLink {
 public:
  /// The service stays with its owner, who cuts the link before the service ends.
  explicit ServiceLink(Service& service) : service_(&service) {}
  explicit ServiceLink(std::unique_ptr<Service> service)
      : owned_(std::move(service)), service_(owned_.get()) {}

  /// From now on, clients are told that the object has disconnected.
  void Cut() {
    service_ = nullptr;
    owned_.reset();
  }

  /// Throws `base::Failure` (RPC_E_DISCONNECTED) if the link is cut.
  Service& Get() const;

 private:
  std::unique_ptr<Service> owned_;
  Service* service_;
};

/// `Kitbay.Manager` for clients.
class ManagerObject : public DispatchObject<::IManager> {
 public:
  explicit ManagerObject(std::shared_ptr<ServiceLink<ManagerService>> link)
      : link_(std::move(link)) {}

  STDMETHODIMP BringToFront() override;

 private:
  std::shared_ptr<ServiceLink<ManagerService>> link_;
};

/// `Kitbay.Registry` for clients.
class RegistryObject : public DispatchObject<::IRegistry> {
 public:
  explicit RegistryObject(std::shared_ptr<ServiceLink<RegistryService>> link)
      : link_(std::move(link)) {}

  STDMETHODIMP RegisterUrlHandler() override;
  STDMETHODIMP GetAppDataPath(BSTR* path) override;
  STDMETHODIMP get_ROOT_REGISTRY_KEY(long* key) override;

 private:
  std::shared_ptr<ServiceLink<RegistryService>> link_;
};

}  // namespace kitbay::platform::win32
