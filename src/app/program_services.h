#pragma once

#include <memory>

#include "app/main_form.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "platform/registry_keys.h"
#include "platform/services.h"

namespace kitbay::app {

/// Creates the program's objects for outside clients.
class ProgramServices : public platform::ServiceFactory {
 public:
  ProgramServices(base::ErrorLog& log, platform::RegistryKeys& keys, const base::Settings& settings,
                  MainForm& form)
      : log_(log), keys_(keys), settings_(settings), form_(form) {}

  std::unique_ptr<platform::ManagerService> CreateManager() override;
  std::unique_ptr<platform::RegistryService> CreateRegistry() override;

 private:
  base::ErrorLog& log_;
  platform::RegistryKeys& keys_;
  const base::Settings& settings_;
  MainForm& form_;
};

}  // namespace kitbay::app
