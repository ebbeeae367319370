// The composition root: creates the platform's objects, then the rooms from the ground up, and
// gives each what it needs.
#include <memory>

#include "app/component_commands.h"
#include "app/error_log_file.h"
#include "app/main_form.h"
#include "app/start_up.h"
#include "app/update_source_form.h"
#include "catalog/available_updates.h"
#include "catalog/installed_components.h"
#include "catalog/new_component_listing.h"
#include "install/package_installation.h"
#include "install/registry_access.h"
#include "platform/win32/win32_platform.h"
#include "update/transfer_events.h"
#include "view/page_events.h"
#include "view/page_rows.h"

namespace kitbay::app {
namespace {

namespace win32 = platform::win32;

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
  const auto libraries = win32::MakeLibraries();
  const auto active_objects = win32::MakeActiveObjects();
  const auto com_server = win32::MakeComServer();
  const auto instance_mark = win32::MakeInstanceMark();
  const auto suite_objects = win32::MakeSuiteObjects();
  const auto loop = win32::MakeMessageLoop();
  const auto window = win32::MakeMainWindow(*loop);
  const auto preference_window = win32::MakePreferenceWindow(*loop);

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
  catalog::UpdateSourceList sources;
  catalog::InstalledRows shown;
  catalog::NewComponents new_components;
  catalog::InstalledComponents local(log, registry_files, versions, rows);
  catalog::AvailableUpdates available(log, *files, settings, versions, shown, rows);
  catalog::InstalledWithUpdates installed(log, *files, settings, registry_files, sources, available,
                                          shown, rows);
  catalog::NewComponentListing new_listing(log, *files, settings, registry_files, sources,
                                           new_components, rows);

  view::PageButtons buttons(log, page, state, *window);
  view::PageTabs tabs(log, page, state, local, buttons);
  view::PageCategories categories(log, page, state, local, installed, new_listing, buttons);

  update::PendingPackages pending_packages;
  update::UpdateSourceFile source_file(log, *files, settings, sources);
  update::UpdateRequests requests(log, settings, *window, sources, new_components,
                                  pending_packages);

  install::InstallSession session;
  install::MainClient main_client(log, settings, *desktop);
  install::PackageExpansion expansion(log, *files);
  install::SelfRegistration self_registration(log, settings, *libraries, session);
  install::DatastoreRegistration datastore(
      {log, *files, settings, *desktop, rows, buttons, sources, session});
  install::PackageInstallation installation({log, settings, *files, *desktop, state, buttons,
                                             expansion, self_registration, datastore, main_client,
                                             session});
  install::UpdateFlows updates({log, settings, *files, *window, page, state, buttons, sources,
                                requests, pending_packages, main_client, session});
  install::Removal removal({log, settings, *files, page, state, rows, main_client, session});
  ComponentCommands commands(requests, updates, removal, buttons, state);

  update::TransferEvents transfer_events({log, settings, *desktop, *window, page, categories,
                                          buttons, sources, pending_packages, requests,
                                          installation});
  update::UpdateDriver update_driver({log, settings, *files, *clock, page, rows, tabs, categories,
                                      source_file, sources, requests});
  view::PageEvents page_events(log, page, state, tabs, categories, buttons, commands);

  InstallationCheck installation_check(log, *desktop, *keys, *window, settings);
  ManagerRegistration manager_registration(log, *active_objects);
  UpdateSourceForm preference_form(log, *files, source_file, *preference_window, *window, page,
                                   update_driver);
  MainForm form({log,
                 settings,
                 *files,
                 *desktop,
                 *keys,
                 *suite_objects,
                 *window,
                 *loop,
                 installation_check,
                 manager_registration,
                 preference_form,
                 page,
                 page_events,
                 sources,
                 source_file,
                 update_driver,
                 requests,
                 transfer_events,
                 shown,
                 new_components,
                 pending_packages,
                 session});
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
