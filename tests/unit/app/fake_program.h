#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "app/error_log_file.h"
#include "app/main_form.h"
#include "app/start_up.h"
#include "catalog/available_updates.h"
#include "catalog/installed_components.h"
#include "catalog/new_component_listing.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_com_server.h"
#include "fakes/fake_suite_objects.h"
#include "fakes/fake_version_resource.h"
#include "journal_fakes.h"
#include "update/transfer_events.h"
#include "view/page_commands.h"
#include "view/page_events.h"
#include "view/page_rows.h"

namespace kitbay::app {

/// The description of a failure for an element or object that is not there, number 91.
inline constexpr const char* kNotSet = "Object variable or With block variable not set";

inline constexpr const char* kFileSystemObject = "FileSystemLib.FileSystemObject";
inline constexpr const char* kTransport = "XMLRPCTRANSPORT.xTransport";
inline constexpr const char* kDownload = "URLDownloadLib.URLDownload";

inline constexpr const char* kUninstallKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
inline constexpr const char* kLogPath = "C:\\Ovalink\\KitbayLog.log";

/// A dialog of update sources without a screen.
class FakePreferenceForm : public PreferenceForm {
 public:
  void Show() override { calls.emplace_back("Preference.Show"); }
  void FocusUrlBox() override { calls.emplace_back("Preference.FocusUrlBox"); }
  void Unload() override { calls.emplace_back("Preference.Unload"); }

  std::vector<std::string> calls;
};

/// Writes down what the buttons of the page and the arriving packages start.
class RecordingCommands : public view::PageCommands, public update::PackageReceiver {
 public:
  void UpdateInstalledAddon() override { calls.emplace_back("UpdateInstalledAddon"); }
  void UpdateInstalledTransport() override { calls.emplace_back("UpdateInstalledTransport"); }
  void UpdateInstalledChannel() override { calls.emplace_back("UpdateInstalledChannel"); }
  void RemoveAddon(const std::string& action, const std::string& kind) override {
    calls.push_back("RemoveAddon " + action + "|" + kind);
  }
  bool InstallNewAddons(const std::string& container, const std::string& name) override {
    calls.push_back("InstallNewAddons " + container + "|" + name);
    return true;
  }
  void Unpack(const update::PendingPackage& /*package*/, const std::string& path) override {
    calls.push_back("Unpack " + path);
  }
  void UnpackTransport(const update::PendingPackage& /*package*/,
                       const std::string& path) override {
    calls.push_back("UnpackTransport " + path);
  }
  void UnpackChannel(const update::PendingPackage& /*package*/, const std::string& path) override {
    calls.push_back("UnpackChannel " + path);
  }
  void InstallProcess() override { calls.emplace_back("InstallProcess"); }

  std::vector<std::string> calls;
};

/// Makes the program's objects for clients outside, as the program does.
class FormServices : public platform::ServiceFactory {
 public:
  explicit FormServices(MainForm& form) : form_(form) {}
  std::unique_ptr<platform::ManagerService> CreateManager() override {
    return std::make_unique<Manager>(form_);
  }
  std::unique_ptr<platform::RegistryService> CreateRegistry() override { return nullptr; }

 private:
  MainForm& form_;
};

/// The program put together as its own start does it, on a machine in memory. The suite is
/// installed in C:\Ovalink, the program lies in C:\Ovalink\Kitbay, the user's data in C:\Ana.
class FakeProgram : public ::testing::Test {
 protected:
  FakeProgram();

  /// Starts the program; returns whether it runs on.
  bool Start();

  /// Starts the program and lets its page load.
  void StartAndLoadPage();

  /// The log file's bytes; "(none)" when there is no such file.
  std::string Log() const;

  /// What a log holds at its start, and the four lines of an entry. The clock stands still.
  static std::string Header();
  static std::string Entry(const std::string& procedure, const std::string& number,
                           const std::string& description);

  /// The journal's calls that begin with one of `starts`.
  std::vector<std::string> CallsOf(const std::vector<std::string>& starts);

  /// How often that call stands in the journal.
  std::ptrdiff_t Count(const std::string& call);

  platform::HtmlNodeRef At(const std::string& id) const { return window.document()->ById(id); }

  Journal journal;

  fakes::FakeClock clock;
  fakes::MemoryFiles files;
  JournalRegistry keys{journal};
  fakes::FakeVersionResource version_resource;
  JournalDesktop desktop{journal};
  JournalActiveObjects active_objects{journal};
  fakes::FakeComServer com_server;
  fakes::FakeInstanceMark instance_mark;
  fakes::FakeSuiteObjects suite_objects{
      [this] { return std::make_unique<JournalFileSystemObject>(journal, files); }};
  JournalWindow window;

  base::Settings settings;
  ErrorLogFile log{clock};
  view::ViewState state;
  view::PageDocument page;
  view::PageRows rows{log, page, state};
  catalog::RegistryFiles registry_files{files, settings};
  catalog::FileVersions versions{log, settings, version_resource};
  catalog::InstalledComponents installed{log, registry_files, versions, rows};
  catalog::UpdateSourceList sources;
  catalog::InstalledRows shown;
  catalog::NewComponents new_components;
  catalog::AvailableUpdates available{log, files, settings, versions, shown, rows};
  catalog::InstalledWithUpdates with_updates{log,     files,     settings, registry_files,
                                             sources, available, shown,    rows};
  catalog::NewComponentListing new_listing{log,     files,          settings, registry_files,
                                           sources, new_components, rows};
  view::PageButtons buttons{log, page, state, window};
  view::PageTabs tabs{log, page, state, installed, buttons};
  view::PageCategories categories{log, page, state, installed, with_updates, new_listing, buttons};
  RecordingCommands commands;
  view::PageEvents page_events{log, page, state, tabs, categories, buttons, commands};
  update::PendingPackages pending_packages;
  install::InstallSession session;
  update::UpdateSourceFile source_file{log, files, settings, sources};
  update::UpdateRequests requests{log, settings, window, sources, new_components, pending_packages};
  update::TransferEvents transfer_events{{log, settings, desktop, window, page, categories, buttons,
                                          sources, pending_packages, requests, commands}};
  update::UpdateDriver update_driver{
      {log, settings, files, clock, page, rows, tabs, categories, source_file, sources, requests}};
  InstallationCheck installation_check{log, desktop, keys, window, settings};
  ManagerRegistration manager_registration{log, active_objects};
  FakePreferenceForm preference_form;
  MainForm form{{log,
                 settings,
                 files,
                 desktop,
                 keys,
                 suite_objects,
                 window,
                 window.message_loop(),
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
                 session}};
  FormServices services{form};
};

}  // namespace kitbay::app
