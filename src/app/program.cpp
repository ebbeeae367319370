#include "app/program.h"

#include <utility>

#include "app/start_up.h"
#include "install/registry.h"

namespace kitbay::app {

Program::Program(const PlatformParts& parts, base::Settings own_place)
    : platform(parts),
      settings(std::move(own_place)),
      log(platform.clock),
      page(log, platform.files, platform.clock, settings, platform.version_resource,
           platform.window),
      main_client(log, settings, platform.desktop),
      expansion(log, platform.files),
      self_registration(log, settings, platform.libraries, session),
      datastore({log, platform.files, page.catalog_files, settings, platform.desktop, page.rows,
                 page.buttons, page.sources, session}),
      installation({log, settings, platform.files, platform.desktop, page.state, page.buttons,
                    expansion, self_registration, datastore, main_client, session}),
      exchange({log, platform.files, settings, platform.clock, platform.desktop, platform.window,
                page, installation}),
      updates({log, settings, page.catalog_files, platform.window, page.document, page.state,
               page.buttons, page.sources, exchange.requests, exchange.pending_packages,
               main_client, session}),
      removal({log, settings, platform.files, platform.desktop, page.document, page.state,
               page.rows, main_client, session}),
      rights({settings, platform.files, platform.desktop, platform.elevation,
              platform.instance_mark, platform.window}),
      commands(exchange.requests, updates, removal, page.buttons, page.state, rights),
      page_events(log, page.document, page.state, page.tabs, page.categories, page.buttons,
                  commands),
      installation_check(log, platform.desktop, platform.keys, platform.window, settings),
      manager_registration(log, platform.active_objects),
      preference_form(log, platform.files, exchange.source_file, platform.preference_window,
                      platform.desktop, platform.window, page.document, exchange.driver),
      form({log, settings, platform.files, platform.desktop, platform.keys, platform.suite_objects,
            platform.window, platform.loop, platform.com_server, installation_check, rights,
            manager_registration, preference_form, page, page_events, exchange, session}),
      services(log, platform.keys, settings, form) {}

bool Program::Start() {
  return Main({log, settings, platform.desktop, platform.instance_mark, platform.active_objects,
               platform.com_server, services, manager_registration, form});
}

void Program::Run() {
  if (Start()) {
    platform.loop.Run();
  }
  platform.com_server.RevokeClassObjects();
}

std::unique_ptr<platform::ManagerService> ProgramServices::CreateManager() {
  return std::make_unique<Manager>(form_);
}

std::unique_ptr<platform::RegistryService> ProgramServices::CreateRegistry() {
  return std::make_unique<install::Registry>(log_, keys_, settings_);
}

}  // namespace kitbay::app
