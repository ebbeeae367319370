#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/failure.h"
#include "platform/services.h"

namespace kitbay::contract {

inline constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057U);
inline constexpr std::int32_t kDisconnected = static_cast<std::int32_t>(0x80010108U);
inline constexpr std::int32_t kCannotCreateObject = 429;

/// A manager that counts its calls and fails on demand.
class CountingManager : public platform::ManagerService {
 public:
  void BringToFront() override {
    ++calls;
    if (failure) {
      throw *failure;
    }
  }

  int calls = 0;
  std::optional<base::Failure> failure;
};

/// Creates services that record their calls in `calls`.
class RecordingServices : public platform::ServiceFactory {
 public:
  std::unique_ptr<platform::ManagerService> CreateManager() override {
    calls += "CreateManager ";
    return std::make_unique<Manager>(*this);
  }
  std::unique_ptr<platform::RegistryService> CreateRegistry() override {
    calls += "CreateRegistry ";
    return std::make_unique<Registry>(*this);
  }

  std::string calls;

 private:
  class Manager : public platform::ManagerService {
   public:
    explicit Manager(RecordingServices& services) : services_(services) {}
    void BringToFront() override { services_.calls += "BringToFront "; }

   private:
    RecordingServices& services_;
  };

  class Registry : public platform::RegistryService {
   public:
    explicit Registry(RecordingServices& services) : services_(services) {}
    ~Registry() override { services_.calls += "~Registry "; }
    void RegisterUrlHandler() override { services_.calls += "RegisterUrlHandler "; }
    std::string GetAppDataPath() override { return "C:\\users\\Zoë\\数据"; }
    std::int32_t ROOT_REGISTRY_KEY() override { return -2147483644; }

   private:
    RecordingServices& services_;
  };
};

}  // namespace kitbay::contract
