#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_com_server.h"
#include "fakes/fake_elevation.h"
#include "fakes/fake_suite_objects.h"
#include "fakes/fake_version_resource.h"
#include "fakes/manifest_text.h"
#include "fakes/recording_error_log.h"
#include "fakes/recording_libraries.h"
#include "journal_fakes.h"

namespace kitbay::app {

using fakes::kNotSet;

inline constexpr const char* kFileSystemObject = "FileSystemLib.FileSystemObject";
inline constexpr const char* kTransport = "XMLRPCTRANSPORT.xTransport";
inline constexpr const char* kDownload = "URLDownloadLib.URLDownload";

inline constexpr const char* kUninstallKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
inline constexpr const char* kLogPath = "C:\\Ovalink\\KitbayLog.log";

/// The program assembled as at its real start, on a machine in memory. The suite is installed in
/// C:\Ovalink, the program in C:\Ovalink\Kitbay, and the user's data are in C:\Ana. A standard user
/// runs the program, but may change the suite until a test says otherwise.
class FakeProgram : public ::testing::Test {
 protected:
  FakeProgram();

  /// Runs the program elevated.
  void RunAsAdministrator();

  /// Starts the program; returns whether it keeps running.
  bool Start();

  /// Starts the program and completes its page.
  void StartAndLoadPage();

  /// The log file's bytes; "(none)" if there is no such file.
  std::string Log() const;

  /// The header of a log, and the four lines of an entry. The clock stands still.
  static std::string Header();
  static std::string Entry(const std::string& procedure, const std::string& number,
                           const std::string& description);

  /// The journal's calls that begin with one of `starts`.
  std::vector<std::string> CallsOf(const std::vector<std::string>& starts);

  /// How often the journal contains that call.
  std::ptrdiff_t Count(const std::string& call);

  platform::HtmlNodeRef At(const std::string& id) const { return window.document()->ById(id); }

  Journal journal;

  fakes::FakeClock clock;
  fakes::MemoryFiles files;
  JournalRegistry keys{journal};
  fakes::FakeVersionResource version_resource;
  JournalDesktop desktop{journal};
  fakes::FakeElevation elevation;
  fakes::RecordingLibraries libraries;
  JournalActiveObjects active_objects{journal};
  fakes::FakeComServer com_server;
  fakes::FakeInstanceMark instance_mark;
  fakes::FakeSuiteObjects suite_objects{
      [this] { return std::make_unique<JournalFileSystemObject>(journal, files); }};
  JournalWindow window;
  JournalPreferenceWindow preference_window{journal};

  Program program{
      {clock, files, keys, version_resource, desktop, elevation, libraries, active_objects,
       com_server, instance_mark, suite_objects, window.message_loop(), window, preference_window},
      OwnPlace()};
  base::Settings& settings{program.settings};
  view::ComponentPage& page{program.page};
  MainForm& form{program.form};

 private:
  static base::Settings OwnPlace();
};

}  // namespace kitbay::app
