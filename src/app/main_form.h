#pragma once

#include <memory>
#include <string>

#include "app/error_log_file.h"
#include "app/installation_check.h"
#include "app/manager_registration.h"
#include "app/suite_rights.h"
#include "base/settings.h"
#include "install/install_session.h"
#include "platform/com_server.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/html_document.h"
#include "platform/main_window.h"
#include "platform/registry_keys.h"
#include "platform/suite_objects.h"
#include "update/update_exchange.h"
#include "view/component_page.h"

namespace kitbay::app {

/// The dialog in which the user edits the update sources, as the main window uses it.
class PreferenceForm {
 public:
  virtual ~PreferenceForm() = default;

  /// Shows the dialog, modeless and owned by the main window.
  virtual void Show() = 0;
  virtual void FocusUrlBox() = 0;

  /// Closes the dialog if it is open.
  virtual void Unload() = 0;
};

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
  platform::ComServer& com_server;
  InstallationCheck& installation_check;
  SuiteRights& rights;
  ManagerRegistration& manager_registration;
  PreferenceForm& preference_form;
  view::ComponentPage& page;
  platform::HtmlDocumentEvents& page_events;
  update::UpdateExchange& exchange;
  install::InstallSession& session;
};

/// The life of the main window `frmAddOn`, from load to unload. Each handler logs its failure and
/// goes no further.
class MainForm : public platform::MainWindowEvents {
 public:
  explicit MainForm(const FormParts& parts) : parts_(parts) {}

  bool IsLoaded() const { return state_ == State::kLoaded; }

  /// Loads the window: checks the installation and the user's rights, opens the error log, shows
  /// the window and navigates to the page. The window is unloaded again if there is no installation
  /// or the program starts again with more rights. If the window cannot be created, it stays
  /// unloaded. Does nothing once the window is, or has been, unloaded.
  void Load();

  /// Raises the window above all others, and loads it first if necessary. Does nothing once the
  /// window is, or has been, unloaded.
  void BringToFront();

  void Form_Unload() override;
  void CmdClose_Click() override;
  void cmdPreference_Click() override;
  void Form_KeyDown(int key_code) override;
  void lblHelp_Click() override;
  void lblHelp_MouseMove() override;
  void WebBrowser1_DocumentComplete() override;
  void WebBrowser1_NavigateError() override;
  void LooksChanged() override;

 private:
  void PrepareWorkingFiles();
  void ShowPage();
  void ConnectPage();
  void MakeUserFolders();
  bool CreateSuiteObjects();
  void CheckDocumentMode();
  void ExplainEmptyLists(bool has_suite_objects);
  void SweepReplacements();
  void ShutDownTransfers();
  void DropPage();
  void DeleteWorkingFolder();
  void ObjSetToNothing();
  std::string HelpTopic() const;
  void TellMissingHelp();

  /// Once the program is ending, no call from outside brings it back.
  enum class State { kUnloaded, kLoaded, kEnding };

  FormParts parts_;
  State state_ = State::kUnloaded;
  bool is_mode_checked_ = false;
  std::unique_ptr<platform::FileSystemObject> file_system_;
  std::unique_ptr<platform::TransportObject> transport_;
  std::unique_ptr<platform::TransportObject> download_;
};

}  // namespace kitbay::app
