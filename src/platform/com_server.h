#pragma once

#include "platform/services.h"

namespace kitbay::platform {

/// Whose classes are written.
enum class ClassesOf {
  kUser,     ///< found by this user's programs, but not by those with an administrator's rights
  kMachine,  ///< found by all; only an administrator's rights allow writing them
};

/// The program's side as a COM server.
class ComServer {
 public:
  virtual ~ComServer() = default;

  /// Writes the program's classes and its type library where they are missing or name another
  /// executable. Throws `base::Failure` when the registry refuses.
  virtual void KeepRegistrationCurrent(ClassesOf whose) = 0;

  /// Offers the program's classes to clients outside until `RevokeClassObjects`. Throws
  /// `base::Failure` with the HRESULT on failure.
  virtual void RegisterClassObjects(ServiceFactory& factory) = 0;

  /// Cuts the clients off as well, whatever objects they hold.
  virtual void RevokeClassObjects() = 0;
};

}  // namespace kitbay::platform
