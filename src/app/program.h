#pragma once

#include <memory>

#include "app/component_commands.h"
#include "app/error_log_file.h"
#include "app/installation_check.h"
#include "app/main_form.h"
#include "app/manager_registration.h"
#include "app/suite_rights.h"
#include "app/update_source_form.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "install/datastore_registration.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "install/package_expansion.h"
#include "install/package_installation.h"
#include "install/removal.h"
#include "install/self_registration.h"
#include "install/update_flows.h"
#include "platform/active_objects.h"
#include "platform/clock.h"
#include "platform/com_server.h"
#include "platform/desktop.h"
#include "platform/elevation.h"
#include "platform/files.h"
#include "platform/instance_mark.h"
#include "platform/libraries.h"
#include "platform/main_window.h"
#include "platform/preference_window.h"
#include "platform/registry_keys.h"
#include "platform/services.h"
#include "platform/suite_objects.h"
#include "platform/version_resource.h"
#include "update/update_exchange.h"
#include "view/component_page.h"
#include "view/page_events.h"

namespace kitbay::app {

/// The platform that the program runs on.
struct PlatformParts {
  const platform::Clock& clock;
  platform::Files& files;
  platform::RegistryKeys& keys;
  const platform::VersionResource& version_resource;
  platform::Desktop& desktop;
  platform::Elevation& elevation;
  platform::Libraries& libraries;
  platform::ActiveObjects& active_objects;
  platform::ComServer& com_server;
  platform::InstanceMark& instance_mark;
  platform::SuiteObjects& suite_objects;
  platform::MessageLoop& loop;
  platform::MainWindow& window;
  platform::PreferenceWindow& preference_window;
};

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

/// The whole program on top of a platform: its layers from the bottom up, each given what it needs.
struct Program {
  /// `own_place` names the program's own folder and file.
  Program(const PlatformParts& parts, base::Settings own_place);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Hands over to an instance that is already running, or loads the window. Returns whether the
  /// program is to keep running.
  bool Start();

  /// Runs the program from start to end.
  void Run();

  PlatformParts platform;
  base::Settings settings;
  ErrorLogFile log;
  view::ComponentPage page;

  install::InstallSession session;
  install::MainClient main_client;
  install::PackageExpansion expansion;
  install::SelfRegistration self_registration;
  install::DatastoreRegistration datastore;
  install::PackageInstallation installation;

  update::UpdateExchange exchange;
  install::UpdateFlows updates;
  install::Removal removal;
  SuiteRights rights;
  ComponentCommands commands;
  view::PageEvents page_events;

  InstallationCheck installation_check;
  ManagerRegistration manager_registration;
  UpdateSourceForm preference_form;
  MainForm form;
  ProgramServices services;
};

}  // namespace kitbay::app
