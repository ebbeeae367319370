#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
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

/// Makes the program's objects for clients outside.
class ServiceFactory {
 public:
  virtual ~ServiceFactory() = default;
  virtual std::unique_ptr<ManagerService> CreateManager() = 0;
  virtual std::unique_ptr<RegistryService> CreateRegistry() = 0;
};

/// A class identifier: the sixteen bytes of its GUID in memory order.
using ClassId = std::array<std::uint8_t, 16>;

/// The system's tables of classes and running objects.
class ActiveObjects {
 public:
  virtual ~ActiveObjects() = default;

  /// The class identifier that a ProgID names; none when the conversion fails.
  virtual std::optional<ClassId> ClassIdFromProgId(const std::string& prog_id) = 0;

  /// Enters `object` into the running-object table under `class_id`, weakly, and returns the
  /// cookie; none when the table refuses it.
  virtual std::optional<std::uint32_t> RegisterActiveObject(ManagerService& object,
                                                            const ClassId& class_id) = 0;

  /// Withdraws an entry and returns the HRESULT of that: 0, or an error when the cookie names none.
  virtual std::int32_t RevokeActiveObject(std::uint32_t cookie) = 0;

  /// Cuts off every client outside that still holds `object`.
  virtual void DisconnectObject(ManagerService& object) = 0;

  /// The running object of class `prog_id`, in whatever process. Throws `base::Failure` (429) when
  /// there is none.
  virtual std::unique_ptr<ManagerService> GetActive(const std::string& prog_id) = 0;
};

/// The program's side as a COM server.
class ComServer {
 public:
  virtual ~ComServer() = default;

  /// Writes the program's classes and its type library for the current user where they are missing
  /// or name another executable. Throws `base::Failure` when the registry refuses.
  virtual void KeepRegistrationCurrent() = 0;

  /// Offers the program's classes to clients outside until `RevokeClassObjects`. Throws
  /// `base::Failure` with the HRESULT on failure.
  virtual void RegisterClassObjects(ServiceFactory& factory) = 0;
  virtual void RevokeClassObjects() = 0;
};

/// The previous-instance test, per logon session.
class InstanceMark {
 public:
  virtual ~InstanceMark() = default;

  /// Whether another instance was running when this mark was first asked.
  virtual bool PreviousInstanceExists() = 0;
};

}  // namespace kitbay::platform
