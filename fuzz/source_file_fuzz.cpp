// The user's file of update sources and the installation's default one: the whole exchange, in
// which every second source fails.
#include <memory>

#include "catalog/manifest_file.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_main_window.h"
#include "fakes/fake_version_resource.h"
#include "fakes/memory_files.h"
#include "fakes/recording_desktop.h"
#include "fuzz_support.h"
#include "update/source_address.h"
#include "update/update_exchange.h"
#include "view/component_page.h"

namespace kitbay::fuzz {
namespace {

constexpr const char* kPage =
    "<div id='category'><b>C</b><input id='installed'><hr><input id='update'></div>"
    "<div id='imgtab'></div><div id='imgtab1'></div><div id='installedaddons'></div>"
    "<div id='installedtransports'></div><div id='installedchannels'></div>"
    "<div id='updatedaddons'></div><div id='updatedtransports'></div>"
    "<div id='updatedchannels'></div>";

/// Demands that only files in the folder of manifests are ever stored.
class CheckedDownloads : public platform::TransportObject {
 public:
  void SetUp(platform::OvTransportEvents& /*receiver*/) override {}
  void Request(const std::string& document) override {
    constexpr std::string_view kStart = "<destpath>C:\\S\\Kitbay\\";
    constexpr std::string_view kEnd = "</destpath><progressevents>true</progressevents>";
    const std::size_t start = document.rfind("<destpath>");
    Demand(start != std::string::npos && document.ends_with(kEnd) &&
               document.compare(start, kStart.size(), kStart) == 0,
           "a manifest goes into the folder of manifests");
    const std::size_t name = start + kStart.size();
    Demand(catalog::IsManifestName(document.substr(name, document.size() - kEnd.size() - name)),
           "a manifest takes the place of no other file");
  }
  void LimitNext(std::uint64_t /*bytes*/) override { Fail("nobody asked for a package"); }
  void ShutDown() override {}
};

class NoPackages : public update::PackageReceiver {
 public:
  void Unpack(const update::PendingPackage& /*package*/, const std::string& /*path*/) override {
    Fail("nobody asked for a package");
  }
  void UnpackTransport(const update::PendingPackage& /*package*/,
                       const std::string& /*path*/) override {
    Fail("nobody asked for a package");
  }
  void UnpackChannel(const update::PendingPackage& /*package*/,
                     const std::string& /*path*/) override {
    Fail("nobody asked for a package");
  }
  void InstallProcess() override { Fail("nobody asked for a package"); }
};

void Exchange(const std::string& preferences, const std::string& seed) {
  // A transport failure, no source, an unusable name, an entry without an attribute.
  ExpectingLog log({0, 9, 75, 91});
  fakes::MemoryFiles files;
  files.AddFile("C:\\U\\updatepreference.xml", preferences);
  files.AddFile("C:\\S\\Kitbay\\DirectoryPreference.xml", seed);
  files.AddFile("C:\\S\\Kitbay\\today.xml", "<components><addons/></components>");
  files.AddFile("C:\\S\\Datastore\\olregistry.xml",
                "<root><addons/><transports/><channels/></root>");
  fakes::MemoryFileSystemObject file_system(files);
  const fakes::FakeClock clock;
  fakes::RecordingDesktop desktop;
  fakes::FakeMainWindow window("");
  const fakes::FakeVersionResource resources;
  base::Settings settings;
  settings.InstallFolder = "C:\\S";
  settings.CustomDataFolder = "C:\\U\\CustomData";

  view::ComponentPage page(log, files, clock, settings, resources, window);
  page.document.Connect(std::make_shared<fakes::FakeHtmlDocument>(kPage));
  NoPackages packages;
  update::UpdateExchange exchange({log, files, settings, clock, desktop, window, page, packages});
  CheckedDownloads downloads;
  exchange.requests.SetDownloadObject(&downloads);

  exchange.source_file.MakeDirectoryPreferenceFile(&file_system);
  exchange.driver.GetDirectoryPreferenceFile();
  catalog::UpdateSourceList& sources = page.sources;
  bool fails = false;
  for (int answers = 0; answers < 16 && !sources.PendingSources.empty(); ++answers) {
    const std::size_t left = sources.PendingSources.size();
    const std::string path = update::SplitSource(sources.PendingSources.front()).file_path;
    if (fails) {
      exchange.transfer_events.Exception(path, "connection timed out");
    } else {
      exchange.transfer_events.Message(path, "Result", "true");
    }
    Demand(sources.PendingSources.size() < left, "an answer takes its source off the list");
    fails = !fails;
  }
}

}  // namespace
}  // namespace kitbay::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [preferences, seed] = kitbay::fuzz::TwoFiles(data, size);
  kitbay::fuzz::Exchange(preferences, seed);
  return 0;
}
