#pragma once

#include "platform/services.h"

namespace kitbay::platform {

/// Whose classes are registered.
enum class ClassesOf {
  kUser,     ///< found by this user's programs, except elevated ones
  kMachine,  ///< found by all programs; writing them needs an administrator's rights
};

/// The program's side as a COM server.
class ComServer {
 public:
  virtual ~ComServer() = default;

  /// Registers the program's classes and type library where they are missing or name another
  /// executable. Throws `base::Failure` if the registry refuses.
  virtual void KeepRegistrationCurrent(ClassesOf whose) = 0;

  /// Offers the program's classes to outside clients until `RevokeClassObjects`. Throws
  /// `base::Failure` with the HRESULT on failure.
  virtual void RegisterClassObjects(ServiceFactory& factory) = 0;

  /// Also disconnects the clients from all objects that they hold.
  virtual void RevokeClassObjects() = 0;
};

}  // namespace kitbay::platform
