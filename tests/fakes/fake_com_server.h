#pragma once

#include <optional>

#include "base/failure.h"
#include "platform/com_services.h"

namespace kitbay::fakes {

/// A COM server whose outside world is the test: it creates the program's objects through
/// `offered`, as a client would.
class FakeComServer : public platform::ComServer {
 public:
  void KeepRegistrationCurrent() override {
    ++registrations;
    if (registration_failure) throw *registration_failure;
  }

  void RegisterClassObjects(platform::ServiceFactory& factory) override {
    if (class_object_failure) throw *class_object_failure;
    offered = &factory;
  }

  void RevokeClassObjects() override { offered = nullptr; }

  /// How often the registration was brought up to date, or tried to be.
  int registrations = 0;

  /// The factory of the classes on offer; null while there are none.
  platform::ServiceFactory* offered = nullptr;

  /// What the next calls fail with.
  std::optional<base::Failure> registration_failure;
  std::optional<base::Failure> class_object_failure;
};

/// A previous-instance test with a given answer.
class FakeInstanceMark : public platform::InstanceMark {
 public:
  bool PreviousInstanceExists() override { return previous_instance; }

  bool previous_instance = false;
};

}  // namespace kitbay::fakes
