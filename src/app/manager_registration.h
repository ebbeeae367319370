#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/error_log.h"
#include "platform/active_objects.h"
#include "platform/services.h"

namespace kitbay::app {

/// The ProgID under which a second start finds the first.
inline constexpr const char* kManagerProgId = "Kitbay.Manager";

/// This process's manager object and its entry in the running-object table.
class ManagerRegistration {
 public:
  ManagerRegistration(base::ErrorLog& log, platform::ActiveObjects& objects)
      : log_(log), objects_(objects) {}

  /// Keeps `manager` and registers it in the table, weakly. If the system does not know the ProgID
  /// or refuses the entry, the program runs on and cannot be found.
  void Publish(std::unique_ptr<platform::ManagerService> manager);

  /// Withdraws the entry, disconnects the object's clients and drops the object.
  void Windup();

 private:
  base::ErrorLog& log_;
  platform::ActiveObjects& objects_;
  std::unique_ptr<platform::ManagerService> manager_;
  std::uint32_t cookie_ = 0;
};

}  // namespace kitbay::app
