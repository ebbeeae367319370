#include "app/manager_registration.h"

#include <utility>

#include "base/guarded.h"

namespace kitbay::app {

void ManagerRegistration::Publish(std::unique_ptr<platform::ManagerService> manager) {
  manager_ = std::move(manager);
  cookie_ = 0;
  if (const auto class_id = objects_.ClassIdFromProgId(kManagerProgId)) {
    cookie_ = objects_.RegisterActiveObject(*manager_, *class_id).value_or(0);
  }
}

void ManagerRegistration::Windup() {
  base::guarded(log_, "Kitbay::Windup", [&] {
    // Without an entry there is nothing to withdraw; that is not a failure.
    objects_.RevokeActiveObject(cookie_);
    if (manager_) {
      objects_.DisconnectObject(*manager_);
    }
    manager_.reset();
  });
}

}  // namespace kitbay::app
