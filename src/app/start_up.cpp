#include "app/start_up.h"

#include <memory>
#include <utility>

#include "base/guarded.h"

namespace kitbay::app {
namespace {

using base::guarded;

void HandOver(const StartUpParts& parts) {
  const auto running = parts.active_objects.GetActive(kManagerProgId);
  parts.desktop.PassForegroundRight();
  running->BringToFront();
}

// With an administrator's rights, the system looks only at the machine's classes. A program that
// cannot register or offer its classes still works for its user.
void OfferClasses(const StartUpParts& parts) {
  guarded(parts.log, "Kitbay::Main", [&] {
    parts.com_server.KeepRegistrationCurrent(parts.settings.is_administrator
                                                 ? platform::ClassesOf::kMachine
                                                 : platform::ClassesOf::kUser);
  });
  guarded(parts.log, "Kitbay::Main",
          [&] { parts.com_server.RegisterClassObjects(parts.services); });
}

void Start(const StartUpParts& parts) {
  auto manager = std::make_unique<Manager>(parts.form);
  if (!parts.form.IsLoaded()) {
    return;
  }
  OfferClasses(parts);
  parts.manager_registration.Publish(std::move(manager));
}

}  // namespace

Manager::Manager(MainForm& form) : form_(form) { form_.Load(); }

bool Main(const StartUpParts& parts) {
  guarded(parts.log, "Kitbay::Main", [&] {
    if (parts.instance_mark.PreviousInstanceExists()) {
      HandOver(parts);
    } else {
      Start(parts);
    }
  });
  return parts.form.IsLoaded();
}

}  // namespace kitbay::app
