// The composition root: creates the platform's objects, then the rooms from the ground up, and
// gives each what it needs.
#include <memory>

#include "app/error_log_file.h"
#include "app/main_form.h"
#include "app/start_up.h"
#include "catalog/installed_components.h"
#include "install/registry_access.h"
#include "platform/win32/win32_platform.h"
#include "view/page_events.h"
#include "view/page_rows.h"

namespace kitbay::app {
namespace {

namespace win32 = platform::win32;

// The dialog of update sources does not exist yet; its button does nothing.
class NoPreferenceForm : public PreferenceForm {
 public:
  void Show() override {}
  void FocusUrlBox() override {}
  void Unload() override {}
};

class Services : public platform::ServiceFactory {
 public:
  Services(base::ErrorLog& log, platform::RegistryKeys& keys, const base::Settings& settings)
      : log_(log), keys_(keys), settings_(settings) {}

  void SetForm(MainForm& form) { form_ = &form; }

  std::unique_ptr<platform::ManagerService> CreateManager() override {
    return std::make_unique<Manager>(*form_);
  }
  std::unique_ptr<platform::RegistryService> CreateRegistry() override {
    return std::make_unique<install::Registry>(log_, keys_, settings_);
  }

 private:
  base::ErrorLog& log_;
  platform::RegistryKeys& keys_;
  const base::Settings& settings_;
  MainForm* form_ = nullptr;
};

int Run() {
  const win32::ComApartment apartment;
  const auto clock = win32::MakeClock();
  const auto files = win32::MakeFiles();
  const auto keys = win32::MakeRegistryKeys();
  const auto version_resource = win32::MakeVersionResource();
  const auto desktop = win32::MakeDesktop();
  const auto active_objects = win32::MakeActiveObjects();
  const auto com_server = win32::MakeComServer();
  const auto instance_mark = win32::MakeInstanceMark();
  const auto suite_objects = win32::MakeSuiteObjects();
  const auto loop = win32::MakeMessageLoop();
  const auto window = win32::MakeMainWindow(*loop);

  const win32::ProgramPlace place = win32::FindProgramPlace();
  base::Settings settings;
  settings.program_folder = place.folder;
  settings.program_name = place.name;
  ErrorLogFile log(*clock);

  view::ViewState state;
  view::PageDocument page;
  view::PageRows rows(log, page, state);
  const catalog::RegistryFiles registry_files(*files, settings);
  const catalog::FileVersions versions(log, settings, *version_resource);
  catalog::InstalledComponents installed(log, registry_files, versions, rows);
  view::PageTabs tabs(log, page, state, installed);
  view::PageEvents page_events(log, page, tabs);

  catalog::UpdateSourceList sources;
  update::UpdateSourceFile source_file(log, *files, settings, sources);
  update::UpdateDriver update_driver(log, source_file, sources, tabs);

  InstallationCheck installation_check(log, *desktop, *keys, *window, settings);
  ManagerRegistration manager_registration(log, *active_objects);
  NoPreferenceForm preference_form;
  MainForm form({log, settings, *desktop, *keys, *suite_objects, *window, *loop, installation_check,
                 manager_registration, preference_form, page, page_events, sources, source_file,
                 update_driver});
  Services services(log, *keys, settings);
  services.SetForm(form);

  if (Main({log, *desktop, *instance_mark, *active_objects, *com_server, services,
            manager_registration, form})) {
    loop->Run();
  }
  com_server->RevokeClassObjects();
  return 0;
}

}  // namespace
}  // namespace kitbay::app

int main() { return kitbay::app::Run(); }
