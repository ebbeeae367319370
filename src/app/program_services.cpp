#include "app/program_services.h"

#include "app/start_up.h"
#include "install/registry.h"

namespace kitbay::app {

std::unique_ptr<platform::ManagerService> ProgramServices::CreateManager() {
  return std::make_unique<Manager>(form_);
}

std::unique_ptr<platform::RegistryService> ProgramServices::CreateRegistry() {
  return std::make_unique<install::Registry>(log_, keys_, settings_);
}

}  // namespace kitbay::app
