#pragma once

#include "platform/services.h"

namespace kitbay::platform {

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

}  // namespace kitbay::platform
