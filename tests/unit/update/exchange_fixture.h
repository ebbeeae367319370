#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_clock.h"
#include "fakes/fake_html_document.h"
#include "fakes/fake_main_window.h"
#include "fakes/fake_version_resource.h"
#include "fakes/manifest_text.h"
#include "fakes/memory_files.h"
#include "fakes/recording_desktop.h"
#include "fakes/recording_downloads.h"
#include "fakes/recording_error_log.h"
#include "update/update_exchange.h"
#include "view/click.h"
#include "view/component_page.h"

namespace kitbay::update {

using fakes::Entry;
using fakes::kNotSet;

/// Records what it receives: "Unpack name C:\a.zip", "InstallProcess".
class RecordingPackages : public PackageReceiver {
 public:
  void Unpack(const PendingPackage& package, const std::string& path) override {
    calls.push_back("Unpack " + package.name + " " + path);
  }
  void UnpackTransport(const PendingPackage& package, const std::string& path) override {
    calls.push_back("UnpackTransport " + package.name + " " + path);
  }
  void UnpackChannel(const PendingPackage& package, const std::string& path) override {
    calls.push_back("UnpackChannel " + package.name + " " + path);
  }
  void InstallProcess() override { calls.emplace_back("InstallProcess"); }

  std::vector<std::string> calls;
};

/// A click on Install in the row "3", which shows `name`, and "Chat" as markup.
inline view::Click InstallClick(base::ComponentKind kind, const std::string& name) {
  return {.kind = kind,
          .action = view::ClickAction::kInstall,
          .button = nullptr,
          .row_id = "3",
          .row_name = "Chat",
          .name_line = name + "Version 1.0"};
}

/// The whole update exchange over a page in memory, with one channel and one addon installed in
/// C:\Suite. Initially the Updates control is disabled, as after the page's first filling.
class ExchangeTest : public testing::Test {
 protected:
  static constexpr const char* kPage =
      "<div id='category'><b>Components</b><input id='installed'><hr><input id='update'></div>"
      "<div id='imgtab'></div><div id='imgtab1'></div>"
      "<div id='installedaddons'></div><div id='installedtransports'></div>"
      "<div id='installedchannels'></div><div id='updatedaddons'></div>"
      "<div id='updatedtransports'></div><div id='updatedchannels'></div>";

  ExchangeTest() {
    settings_.InstallFolder = "C:\\Suite";
    settings_.CustomDataFolder = "C:\\User\\Ovalink\\CustomData";
    files_.AddFolder("C:\\User\\Ovalink");
    files_.AddFolder("C:\\Suite\\Kitbay");
    files_.AddFile(
        "C:\\Suite\\Datastore\\olregistry.xml",
        "<root><addons><addon id='chat' name='Chat'><filename>chat.dll</filename>"
        "<description>Talks</description><core>0</core></addon></addons><transports/>"
        "<channels><channel id='news' name='News' version='2'>"
        "<description>Headlines</description><core>0</core></channel></channels></root>");
    page_.Connect(html_);
    requests_.SetDownloadObject(&downloads_);
    html_->ById("update")->SetDisabled(true);
  }

  void SetSources(const std::string& preferences) {
    files_.AddFile("C:\\User\\Ovalink\\updatepreference.xml",
                   "<root><preferences>" + preferences + "</preferences></root>");
  }

  /// Adds a manifest that offers one new addon, written at `time`.
  void AddManifest(const std::string& name, const platform::LocalTime& time = {2026, 11, 21}) {
    const std::string path = "C:\\Suite\\Kitbay\\" + name;
    files_.AddFile(
        path, fakes::ManifestText(fakes::OfferText(base::ComponentKind::kAddon,
                                                   {.id = "new-" + name,
                                                    .name = "Offer of " + name,
                                                    .url = "packages.example/" + name + ".zip"}),
                                  "", ""));
    files_.SetLastModified(path, time);
  }

  static std::string Request(const std::string& server, const std::string& path,
                             const std::string& destination) {
    return "<server>" + server + "</server><filetodownload>" + path +
           "</filetodownload><destpath>" + destination +
           "</destpath><progressevents>true</progressevents>";
  }

  /// The request for the manifest of a source given as host and path.
  static std::string ManifestRequest(const std::string& host, const std::string& path) {
    return Request(host, path, "C:\\Suite\\Kitbay" + ("\\" + path.substr(path.rfind('/') + 1)));
  }

  std::string Status() { return window_.status_bar().PanelText(platform::kStatusPanel); }
  std::string Text(const std::string& id) const { return html_->ById(id)->InnerText(); }
  bool UpdatesControlIsOn() const { return !html_->ById("update")->Disabled(); }

  /// Whether the page has every list filled, as after the last answer.
  bool DetailsAreShown() const {
    return state_.installed_lists_current && UpdatesControlIsOn() &&
           Text("updatedaddons").find("Addons") != std::string::npos &&
           Text("installedchannels").find("Currently Installed Channels") == 0;
  }

  /// Whether the page is as it is while no source has answered.
  bool LocalDataIsShown() const {
    return !state_.installed_lists_current && !UpdatesControlIsOn() &&
           Text("installedchannels").find("News") != std::string::npos &&
           Text("updatedaddons").empty();
  }

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  fakes::FakeClock clock_{{2026, 11, 21, 10, 15, 30}};
  fakes::RecordingDesktop desktop_;
  fakes::FakeMainWindow window_{""};
  fakes::FakeVersionResource resources_;
  fakes::RecordingDownloads downloads_;
  RecordingPackages packages_;
  base::Settings settings_;
  std::shared_ptr<fakes::FakeHtmlDocument> html_ = std::make_shared<fakes::FakeHtmlDocument>(kPage);
  view::ComponentPage components_{log_, files_, clock_, settings_, resources_, window_};
  UpdateExchange exchange_{
      {log_, files_, settings_, clock_, desktop_, window_, components_, packages_}};
  view::PageDocument& page_{components_.document};
  view::ViewState& state_{components_.state};
  view::PageRows& rows_{components_.rows};
  catalog::UpdateSourceList& sources_{components_.sources};
  catalog::NewComponents& new_components_{components_.new_components};
  view::PageTabs& tabs_{components_.tabs};
  view::PageButtons& buttons_{components_.buttons};
  view::PageCategories& categories_{components_.categories};
  PendingPackages& pending_packages_{exchange_.pending_packages};
  UpdateSourceFile& source_file_{exchange_.source_file};
  UpdateRequests& requests_{exchange_.requests};
  TransferEvents& events_{exchange_.transfer_events};
  UpdateDriver& driver_{exchange_.driver};
};

}  // namespace kitbay::update
