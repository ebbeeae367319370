// crash_client SUITE_FOLDER USER_FOLDER STOP (install|remove KIND ID)...
// Enters components into the suite's registry files, or removes them, as the program does. KIND is
// addon, transport or channel. The component removed is the one whose name is ID. Stops for ever at
// the STOPth point, after the line "stopped"; with 0 it continues to the end and prints "done" with
// the number of points.
// crash_client SUITE_FOLDER USER_FOLDER again KIND ID
// Enters the component and removes it again, over and over, after the line "begun".
// crash_client SUITE_FOLDER USER_FOLDER sweep
// Sweeps what interrupted saves have left, as the program does at its start.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "fakes/blank_page.h"
#include "fakes/consenting_desktop.h"
#include "fakes/fake_clock.h"
#include "install/datastore_registration.h"
#include "install/removal.h"
#include "platform/win32/win32_platform.h"
#include "stopping_files.h"

namespace kitbay::crash {
namespace {

using platform::win32::MakeFiles;

void Print(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

[[noreturn]] void End(const std::string& why) {
  Print("failed: " + why);
  std::exit(1);
}

/// A log that ends the run, because everything done here must succeed.
class StrictLog : public base::ErrorLog {
 public:
  std::string TimeText() const override { return {}; }
  void LogError(const std::string& /*time_text*/, const std::string& procedure,
                std::int32_t /*number*/, const std::string& description) override {
    End(procedure + ": " + description);
  }
};

/// The parts that change the registry files, over a page without rows and without a main client.
class Rooms {
 public:
  Rooms(platform::Files& files, const std::string& suite, const std::string& user) : files_(files) {
    settings_.InstallFolder = suite;
    settings_.CustomDataFolder = user;
    settings_.MainAppName = "Tessel";
    sources_.UpdateSources = {"updates.example/offers.xml"};
    page_.Connect(std::make_shared<fakes::BlankDocument>());
  }

  void Install(const std::string& kind, const std::string& id) {
    session_.package_name = id;
    if (kind == "addon" && registration_.enterAddon()) {
      registration_.updateRegistry();
    } else if (kind == "transport" && registration_.enterTransport()) {
      registration_.updateRegistryForTransport();
    } else if (kind == "channel" && registration_.enterChannel()) {
      registration_.updateRegistryForChannel();
    } else {
      End("there is no " + kind + " " + id);
    }
  }

  void Remove(const std::string& kind, const std::string& name) {
    session_.component_name = name;
    const base::ComponentKind which = kind == "addon"       ? base::ComponentKind::kAddon
                                      : kind == "transport" ? base::ComponentKind::kTransport
                                                            : base::ComponentKind::kChannel;
    if (!removal_.checkExe(which, name)) {
      End(name + " was not removed");
    }
  }

 private:
  platform::Files& files_;
  base::Settings settings_;
  StrictLog log_;
  fakes::ConsentingDesktop desktop_;
  fakes::BlankWindow window_;
  view::PageDocument page_;
  view::ViewState state_;
  view::PageRows rows_{log_, page_, state_};
  view::PageButtons buttons_{log_, page_, state_, window_};
  catalog::UpdateSourceList sources_;
  fakes::FakeClock clock_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles catalog_files_{files_, settings_, trust_};
  install::InstallSession session_;
  install::MainClient main_client_{log_, settings_, desktop_};
  install::DatastoreRegistration registration_{
      {log_, files_, catalog_files_, settings_, desktop_, rows_, buttons_, sources_, session_}};
  install::Removal removal_{
      {log_, settings_, files_, desktop_, page_, state_, rows_, main_client_, session_}};
};

int Run(const std::vector<std::string>& words) {
  if (words.size() < 3) {
    End("SUITE_FOLDER USER_FOLDER and what to do are needed");
  }
  const std::string& suite = words[0];
  const std::string& user = words[1];
  const auto real_files = MakeFiles();
  if (words[2] == "sweep") {
    for (const std::string& folder : {suite + "\\Datastore", suite + "\\Kitbay", user}) {
      real_files->SweepReplacements(folder);
    }
    Print("done");
    return 0;
  }
  const bool is_endless = words[2] == "again" && words.size() == 5;
  StoppingFiles files(*real_files, is_endless ? 0 : std::atoi(words[2].c_str()));
  Rooms rooms(files, suite, user);
  if (is_endless) {
    Print("begun");
    for (;;) {
      rooms.Install(words[3], words[4]);
      rooms.Remove(words[3], words[4]);
    }
  }
  for (std::size_t i = 3; i + 2 < words.size(); i += 3) {
    if (words[i] == "install") {
      rooms.Install(words[i + 1], words[i + 2]);
    } else {
      rooms.Remove(words[i + 1], words[i + 2]);
    }
  }
  Print("done " + std::to_string(files.points()));
  return 0;
}

}  // namespace
}  // namespace kitbay::crash

int main(int argc, char** argv) {
  return kitbay::crash::Run(std::vector<std::string>(argv + 1, argv + argc));
}
