#pragma once

#include <memory>
#include <string>

#include "app/error_log_file.h"
#include "app/installation_check.h"
#include "app/manager_registration.h"
#include "app/preference_form.h"
#include "base/settings.h"
#include "catalog/installed_rows.h"
#include "catalog/new_components.h"
#include "catalog/update_source_list.h"
#include "install/install_session.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/registry_keys.h"
#include "platform/suite_objects.h"
#include "update/pending_packages.h"
#include "update/update_driver.h"
#include "update/update_requests.h"
#include "update/update_source_file.h"
#include "view/page_document.h"

namespace kitbay::app {

/// What the main window works with.
struct FormParts {
  ErrorLogFile& log;
  base::Settings& settings;
  platform::Files& files;
  platform::Desktop& desktop;
  platform::RegistryKeys& keys;
  platform::SuiteObjects& suite_objects;
  platform::MainWindow& window;
  platform::MessageLoop& loop;
  InstallationCheck& installation_check;
  ManagerRegistration& manager_registration;
  PreferenceForm& preference_form;
  view::PageDocument& page;
  platform::HtmlDocumentEvents& page_events;
  catalog::UpdateSourceList& sources;
  update::UpdateSourceFile& source_file;
  update::UpdateDriver& update_driver;
  update::UpdateRequests& requests;
  platform::OvTransportEvents& transfer_events;
  catalog::InstalledRows& shown;
  catalog::NewComponents& new_components;
  update::PendingPackages& pending_packages;
  install::InstallSession& session;
};

/// The life of the main window `frmAddOn`, from its load to its unload. Each handler logs its
/// failure and goes no further.
class MainForm : public platform::MainWindowEvents {
 public:
  explicit MainForm(const FormParts& parts) : parts_(parts) {}

  bool IsLoaded() const { return loaded_; }

  /// Loads the window: checks the installation, opens the error log, shows the window and
  /// navigates to the page. Without an installation the window is unloaded again; a window that
  /// cannot be created stays unloaded.
  void Load();

  /// Raises the window above all others, loading it first if need be.
  void BringToFront();

  void Form_Unload() override;
  void CmdClose_Click() override;
  void cmdPreference_Click() override;
  void Form_KeyDown(int key_code) override;
  void lblHelp_Click() override;
  void lblHelp_MouseMove() override;
  void WebBrowser1_DocumentComplete() override;

 private:
  void PrepareWorkingFiles();
  void ShowPage();
  void ConnectPage();
  void SweepReplacements();
  void ShutDownTransfers();
  void DeleteWorkingFolder();
  void ObjSetToNothing();
  std::string HelpTopic() const;

  FormParts parts_;
  bool loaded_ = false;
  std::unique_ptr<platform::FileSystemObject> file_system_;
  std::unique_ptr<platform::TransportObject> transport_;
  std::unique_ptr<platform::TransportObject> download_;
};

}  // namespace kitbay::app
