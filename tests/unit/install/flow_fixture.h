#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_html_document.h"
#include "fakes/fake_main_window.h"
#include "fakes/manifest_text.h"
#include "fakes/memory_files.h"
#include "fakes/recording_desktop.h"
#include "fakes/recording_downloads.h"
#include "fakes/recording_error_log.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "update/update_requests.h"
#include "view/click.h"
#include "view/page_buttons.h"
#include "view/page_ids.h"
#include "view/page_rows.h"

namespace kitbay::install {

using fakes::Entry;
using fakes::kNotSet;

inline constexpr const char* kDatastore = "C:\\Ovalink\\Datastore\\olregistry.xml";
inline constexpr const char* kCustomRegistry = "C:\\Ana\\CustomData\\customregistry.xml";

/// The call that looks for the main client's window.
inline constexpr const char* kFindClient = "FindTopWindow [ThunderRT6FormDC] [OvlTessel]";

/// A desktop on which something happens while the user reads a message or answers a question.
class BusyDesktop : public fakes::RecordingDesktop {
 public:
  int ShowMessage(const std::string& text, const std::string& title, int style) override {
    if (while_asking) {
      while_asking();
    }
    return RecordingDesktop::ShowMessage(text, title, style);
  }

  platform::WindowHandle FindTopWindow(const std::string& window_class,
                                       const std::string& caption) override {
    if (search_failure) {
      throw base::Failure(*search_failure);
    }
    return RecordingDesktop::FindTopWindow(window_class, caption);
  }

  std::function<void()> while_asking;
  std::optional<base::Failure> search_failure;
};

/// A page with rows of components, with the suite in C:\Ovalink and the user's data in
/// C:\Ana\CustomData. The main client is not running.
class FlowTest : public ::testing::Test {
 protected:
  FlowTest() {
    settings_.InstallFolder = "C:\\Ovalink";
    settings_.CustomDataFolder = "C:\\Ana\\CustomData";
    settings_.MainAppName = "Tessel Messenger";
    settings_.MainAppExe = "Tessel.exe";
    files_.SetEverybodys("C:\\Ovalink");
    files_.AddFolder("C:\\Ana\\CustomData");
    page_.Connect(html_);
    requests_.SetDownloadObject(&downloads_);
  }

  void StartClient() { client_window_ = desktop_.AddWindow("ThunderRT6FormDC", "OvlTessel"); }
  std::string CloseClient() const { return "SendClose " + std::to_string(client_window_.value); }

  /// Appends a row with a Remove and an Update button to an installed list.
  void AddInstalled(base::ComponentKind kind, const std::string& name, std::int16_t row) {
    rows_.fillDivWithUpdates(view::kInstalledContainers[kind], name, "1.0.0.0", "Does things.", row,
                             false, false);
  }

  /// Appends a row with an Install button to a list of new components.
  void AddNew(base::ComponentKind kind, const std::string& name, std::int16_t row) {
    rows_.showUpdates(view::kUpdatedContainers[kind], name, "2.0.0.0", "Does things.", row);
  }

  /// The row at that position in a container.
  platform::HtmlNodeRef Row(const std::string& container, int place = 0) const {
    return html_->ById(container)->Child(place);
  }

  /// A button of a row; in an installed row Remove comes first, then Update.
  platform::HtmlNodeRef Button(const std::string& container, int place, int button) const {
    return Row(container, place)->Child(1)->Child(0)->Child(1)->Child(button);
  }

  /// The click on that button of an installed row.
  view::Click ClickOn(base::ComponentKind kind, int place, int button) const {
    return view::ReadClick(Button(view::kInstalledContainers[kind], place, button)).value();
  }

  int RowCount(const std::string& container) const { return html_->ById(container)->ChildCount(); }
  std::string Status() { return window_.status_bar().PanelText(platform::kStatusPanel); }

  static constexpr int kRemove = 0;
  static constexpr int kUpdate = 1;

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  BusyDesktop desktop_;
  fakes::FakeMainWindow window_{""};
  fakes::RecordingDownloads downloads_;
  base::Settings settings_;
  fakes::FakeClock clock_;
  catalog::UpdateSourceList sources_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles catalog_files_{files_, settings_, trust_};
  std::shared_ptr<fakes::FakeHtmlDocument> html_ = std::make_shared<fakes::FakeHtmlDocument>(
      "<div id='installedaddons'></div><div id='installedtransports'></div>"
      "<div id='installedchannels'></div><div id='updatedaddons'></div>"
      "<div id='updatedtransports'></div><div id='updatedchannels'></div>");
  view::PageDocument page_;
  view::ViewState state_;
  view::PageRows rows_{log_, page_, state_};
  view::PageButtons buttons_{log_, page_, state_, window_};
  catalog::NewComponents new_components_;
  update::PendingPackages pending_packages_;
  update::UpdateSourceFile source_file_{log_, files_, settings_, sources_};
  update::ManifestCache manifests_{log_, files_, settings_, trust_, source_file_};
  update::UpdateRequests requests_{log_,       settings_,        window_, sources_, new_components_,
                                   manifests_, pending_packages_};
  InstallSession session_;
  MainClient main_client_{log_, settings_, desktop_};
  platform::WindowHandle client_window_;
};

}  // namespace kitbay::install
