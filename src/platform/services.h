#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace kitbay::platform {

/// The program's object `Kitbay.Manager` as its clients see it.
class ManagerService {
 public:
  virtual ~ManagerService() = default;
  virtual void BringToFront() = 0;
};

/// The program's object `Kitbay.Registry` as its clients see it, members in the interface's order.
class RegistryService {
 public:
  virtual ~RegistryService() = default;
  virtual void RegisterUrlHandler() = 0;
  virtual std::string GetAppDataPath() = 0;
  virtual std::int32_t ROOT_REGISTRY_KEY() = 0;
};

/// Creates the program's objects for outside clients.
class ServiceFactory {
 public:
  virtual ~ServiceFactory() = default;
  virtual std::unique_ptr<ManagerService> CreateManager() = 0;
  virtual std::unique_ptr<RegistryService> CreateRegistry() = 0;
};

}  // namespace kitbay::platform
