#pragma once

#include "app/main_form.h"
#include "app/manager_registration.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "platform/active_objects.h"
#include "platform/com_server.h"
#include "platform/desktop.h"
#include "platform/instance_mark.h"
#include "platform/services.h"

namespace kitbay::app {

/// The program's object `Kitbay.Manager`. Creating it loads the main window.
class Manager : public platform::ManagerService {
 public:
  explicit Manager(MainForm& form);

  void BringToFront() override { form_.BringToFront(); }

 private:
  MainForm& form_;
};

/// What the program's start works with.
struct StartUpParts {
  base::ErrorLog& log;
  const base::Settings& settings;
  platform::Desktop& desktop;
  platform::InstanceMark& instance_mark;
  platform::ActiveObjects& active_objects;
  platform::ComServer& com_server;
  platform::ServiceFactory& services;
  ManagerRegistration& manager_registration;
  MainForm& form;
};

/// Starts the program. A first instance loads the main window and becomes findable; a second one
/// raises the first one's window and ends. Returns whether the program is to keep running.
bool Main(const StartUpParts& parts);

}  // namespace kitbay::app
