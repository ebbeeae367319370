#include "app/main_form.h"

#include <utility>

#include "base/failure.h"
#include "base/guarded.h"
#include "install/registry.h"
#include "update/progress_display.h"
#include "view/page_ids.h"

namespace kitbay::app {
namespace {

using base::guarded;

constexpr int kEscape = 27;
constexpr int kDocumentMode = 5;
constexpr const char* kPageLoaded = " Kitbay::WebBrowser1_DocumentComplete";
constexpr const char* kNoSuiteObjects =
    "Kitbay cannot list anything: an object of the suite is missing or does not start. The error "
    "log says which.";
constexpr const char* kNoDatastore =
    "Kitbay cannot read from the suite's datastore what is installed. The error log says why.";
constexpr const char* kPageFile = "\\AddonUpdates.html";

}  // namespace

// Preparing the working files is a separate step: if the installation folder cannot be written, the
// window still opens, only without a log.
void MainForm::Load() {
  if (state_ != State::kUnloaded) {
    return;
  }
  parts_.settings.MainAppExe = "Tessel.exe";
  parts_.settings.MainAppName = "Application";
  if (!guarded(parts_.log, "Kitbay::Form_Load", [&] { parts_.window.Load(*this); })) {
    return;
  }
  state_ = State::kLoaded;
  guarded(parts_.log, "Kitbay::Form_Load", [&] {
    file_system_ = parts_.suite_objects.CreateFileSystemObject("FileSystemLib.FileSystemObject");
    parts_.session.file_system = file_system_.get();
  });
  parts_.installation_check.CheckInstallation(file_system_.get());
  if (!IsLoaded()) {
    return;
  }
  guarded(parts_.log, "Kitbay::Form_Load", [&] { parts_.rights.Check(); });
  if (!IsLoaded()) {
    return;
  }
  parts_.installation_check.TellOtherBitness();
  guarded(parts_.log, "Kitbay::Form_Load", [&] { PrepareWorkingFiles(); });
  guarded(parts_.log, "Kitbay::Form_Load", [&] { ShowPage(); });
}

void MainForm::PrepareWorkingFiles() {
  if (!file_system_) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  const std::string& folder = parts_.settings.InstallFolder;
  if (!file_system_->FolderExists(folder + "/Temp")) {
    file_system_->CreateFolder(folder + "/Temp");
  }
  parts_.log.Open(*file_system_, folder + "\\KitbayLog.log");
}

void MainForm::ShowPage() {
  parts_.window.Show();
  parts_.window.Navigate(parts_.settings.program_folder + kPageFile);
  update::ShowProgressInStatusBar(parts_.log, parts_.window, true);
  parts_.window.SetHelpFile(HelpTopic());
}

std::string MainForm::HelpTopic() const {
  return parts_.settings.InstallFolder + "\\help\\tesselhelp.chm::/AddRemovefeatures.html";
}

void MainForm::BringToFront() {
  guarded(parts_.log, "Kitbay::BringToFront", [&] {
    Load();
    if (!IsLoaded()) {
      return;
    }
    constexpr unsigned kPlaceOnly = platform::kNoSize | platform::kNoMove;
    platform::Desktop& desktop = parts_.desktop;
    platform::MainWindow& window = parts_.window;
    desktop.SetWindowPos(window.Handle(), platform::kTopmost, kPlaceOnly);
    desktop.SetWindowPos(window.Handle(), platform::kNotTopmost, kPlaceOnly);
    desktop.ShowWindow(window.Handle(), platform::kRestore);
    desktop.ShowWindow(window.Handle(), platform::kShow);
    desktop.SetActiveWindow(window.Handle());
  });
}

void MainForm::CmdClose_Click() {
  guarded(parts_.log, "Kitbay::CmdClose_Click", [&] {
    parts_.preference_form.Unload();
    parts_.window.Unload();
  });
}

void MainForm::cmdPreference_Click() {
  guarded(parts_.log, "Kitbay::cmdPreference_Click", [&] {
    parts_.preference_form.Show();
    parts_.preference_form.FocusUrlBox();
  });
}

void MainForm::Form_KeyDown(int key_code) {
  guarded(parts_.log, "Kitbay::Form_KeyDown", [&] {
    if (key_code == kEscape) {
      parts_.window.Unload();
      parts_.preference_form.Unload();
    }
  });
}

void MainForm::lblHelp_Click() {
  guarded(parts_.log, "Kitbay::lblHelp_Click", [&] {
    try {
      parts_.desktop.DisplayHelpTopic(HelpTopic());
    } catch (const base::Failure&) {
      TellMissingHelp();
      throw;
    }
  });
}

void MainForm::TellMissingHelp() {
  const std::string topic = HelpTopic();
  parts_.desktop.ShowMessage("Cannot open the help file " + topic.substr(0, topic.find("::")) + ".",
                             platform::kMessageTitle, platform::kOkOnly);
}

void MainForm::lblHelp_MouseMove() {
  guarded(parts_.log, "Kitbay::lblHelp_MouseMove", [&] {
    parts_.window.SetHelpCursor(parts_.settings.InstallFolder + "\\Channels\\HAND-M.cur");
  });
}

void MainForm::WebBrowser1_DocumentComplete() {
  const bool is_connected = guarded(parts_.log, kPageLoaded, [&] { ConnectPage(); });
  if (is_connected) {
    LooksChanged();
    CheckDocumentMode();
  }
  const bool has_suite_objects = is_connected && CreateSuiteObjects();
  if (has_suite_objects) {
    SweepReplacements();
    guarded(parts_.log, kPageLoaded, [&] {
      parts_.exchange.source_file.MakeDirectoryPreferenceFile(file_system_.get());
      parts_.exchange.driver.GetDirectoryPreferenceFile();
    });
    guarded(parts_.log, kPageLoaded, [&] { parts_.rights.TellOnce(); });
  }
  if (parts_.page.document.IsConnected()) {
    ExplainEmptyLists(has_suite_objects);
  }
}

void MainForm::WebBrowser1_NavigateError() {
  guarded(parts_.log, "Kitbay::WebBrowser1_NavigateError",
          [] { throw base::Failure(base::RuntimeError::kFileNotFound); });
}

void MainForm::LooksChanged() { parts_.page.tabs.FollowLooks(parts_.window.CurrentLooks()); }

bool MainForm::CreateSuiteObjects() {
  platform::SuiteObjects& suite = parts_.suite_objects;
  return guarded(parts_.log, "Kitbay::XMLRPCTRANSPORT.xTransport create object failed",
                 [&] {
                   transport_ = suite.CreateTransportObject("XMLRPCTRANSPORT.xTransport");
                   transport_->SetUp(parts_.exchange.transfer_events);
                 }) &&
         guarded(parts_.log, "Kitbay::OvGlobals.URLDownLoadProgID create object failed", [&] {
           parts_.exchange.requests.SetDownloadObject(nullptr);
           download_ = suite.CreateTransportObject("URLDownloadLib.URLDownload");
           download_->SetUp(parts_.exchange.transfer_events);
           parts_.exchange.requests.SetDownloadObject(download_.get());
         });
}

// Later modes create no element from a start tag, and other modes lay out the page differently.
void MainForm::CheckDocumentMode() {
  if (std::exchange(is_mode_checked_, true)) {
    return;
  }
  guarded(parts_.log, "Kitbay::CheckDocumentMode", [&] {
    const int mode = parts_.page.document.document().DocumentMode();
    if (mode != kDocumentMode) {
      throw base::Failure(base::RuntimeError::kInvalidProcedureCall,
                          "the page is shown in document mode " + std::to_string(mode));
    }
  });
}

// The explanation lies behind the lists, so it shows only where they are empty.
void MainForm::ExplainEmptyLists(bool has_suite_objects) {
  guarded(parts_.log, kPageLoaded, [&] {
    const view::PageDocument& page = parts_.page.document;
    const bool is_listed = page.Element(view::kInstalledContainers.channel)->ChildCount() > 0;
    page.SetNotice(!has_suite_objects ? kNoSuiteObjects : (is_listed ? "" : kNoDatastore));
  });
}

void MainForm::ConnectPage() {
  parts_.window.FitBrowser();
  parts_.page.document.Connect(parts_.window.ConnectDocument(parts_.page_events));
  install::Registry registry(parts_.log, parts_.keys, parts_.settings);
  const std::string user_data = registry.GetAppDataPath();
  parts_.settings.CustomDataFolder = user_data + "\\Ovalink\\CustomData";
  if (!user_data.empty()) {
    MakeUserFolders();
  }
}

// A user who has never started the main client has no such folders.
void MainForm::MakeUserFolders() {
  guarded(parts_.log, "Kitbay::MakeUserFolders", [&] {
    const std::string& custom_data = parts_.settings.CustomDataFolder;
    for (const std::string& folder :
         {custom_data.substr(0, custom_data.rfind('\\')), custom_data}) {
      if (!parts_.files.Exists(folder)) {
        parts_.files.CreateFolder(folder);
      }
    }
  });
}

// An earlier run may have been ended while it replaced a file.
void MainForm::SweepReplacements() {
  guarded(parts_.log, "Kitbay::SweepReplacements", [&] {
    const base::Settings& settings = parts_.settings;
    if (!settings.InstallFolder.empty()) {
      parts_.files.SweepReplacements(settings.InstallFolder);
    }
    parts_.files.SweepReplacements(settings.CustomDataFolder + "\\..");
  });
}

void MainForm::Form_Unload() {
  state_ = State::kEnding;
  parts_.com_server.RevokeClassObjects();
  guarded(parts_.log, "Kitbay::Form_Unload", [&] {
    update::ShowProgressInStatusBar(parts_.log, parts_.window, false);
    parts_.manager_registration.Windup();
    ShutDownTransfers();
    ObjSetToNothing();
    DeleteWorkingFolder();
    DropPage();
    parts_.desktop.CloseAllHelp();
    file_system_.reset();
    parts_.log.Close();
  });
  // The page is released whichever step failed: otherwise a dialog that closes with this window
  // would make the driver work on it.
  if (parts_.page.document.IsConnected()) {
    guarded(parts_.log, "Kitbay::Form_Unload", [&] { DropPage(); });
  }
  parts_.loop.Quit();
}

void MainForm::DropPage() {
  parts_.page.document.Drop();
  parts_.window.DisconnectDocument();
}

void MainForm::ShutDownTransfers() {
  parts_.exchange.requests.SetDownloadObject(nullptr);
  for (auto* const object : {&download_, &transport_}) {
    if (*object) {
      (*object)->ShutDown();
      object->reset();
    }
  }
}

void MainForm::ObjSetToNothing() {
  guarded(parts_.log, "Kitbay::ObjSetToNothing", [&] {
    parts_.page.sources = {};
    parts_.page.shown = {};
    parts_.page.new_components = {};
    parts_.exchange.pending_packages = {};
    parts_.session = {};
  });
}

// Without an installation folder, the path would name a folder that does not belong to the program.
// If the suite may not be changed, the folder belongs to an instance with more rights.
void MainForm::DeleteWorkingFolder() {
  const std::string& folder = parts_.settings.InstallFolder;
  if (file_system_ && !folder.empty() && parts_.settings.may_change_suite &&
      file_system_->FolderExists(folder + "\\Temp")) {
    file_system_->DeleteFolder(folder + "\\Temp", false);
  }
}

}  // namespace kitbay::app
