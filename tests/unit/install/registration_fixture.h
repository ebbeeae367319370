#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_html_document.h"
#include "fakes/fake_main_window.h"
#include "fakes/memory_files.h"
#include "fakes/recording_desktop.h"
#include "fakes/recording_error_log.h"
#include "install/datastore_registration.h"
#include "view/page_buttons.h"
#include "view/page_document.h"
#include "view/page_rows.h"

namespace kitbay::install {

using fakes::Entry;
using fakes::kNotSet;

/// A desktop on which a test can look around while a message is shown.
class WatchedDesktop : public fakes::RecordingDesktop {
 public:
  int ShowMessage(const std::string& text, const std::string& title, int style) override {
    if (when_shown) {
      when_shown();
    }
    return RecordingDesktop::ShowMessage(text, title, style);
  }

  std::function<void()> when_shown;
};

/// A suite in C:\Suite, its user's folder C:\User\CustomData, and a page with row 7, of Chess,
/// clicked.
class RegistrationTest : public testing::Test {
 protected:
  static constexpr const char* kDatastore = "C:\\Suite\\Datastore\\olregistry.xml";
  static constexpr const char* kCustomRegistry = "C:\\User\\CustomData\\customregistry.xml";

  RegistrationTest() {
    settings_.InstallFolder = "C:\\Suite";
    settings_.CustomDataFolder = "C:\\User\\CustomData";
    settings_.MainAppName = "Tessel";
    files_.AddFolder("C:\\User\\CustomData");
    page_.Connect(html_);
    state_.current_row_id = "7";
    state_.current_row_name = "Chess";
    window_.status_bar().SetPanelText(platform::kStatusPanel, "Downloading");
  }

  /// Adds an update source whose manifest has these contents.
  void Offer(const std::string& name, const std::string& contents) {
    sources_.UpdateSources.push_back("updates.example/path/" + name);
    files_.AddFile("C:\\Suite\\Kitbay\\" + name, "<components>" + contents + "</components>");
  }

  std::string Datastore() const { return files_.Bytes(kDatastore).value_or("(none)"); }
  std::string CustomRegistry() const { return files_.Bytes(kCustomRegistry).value_or("(none)"); }

  std::string Status() { return window_.status_bar().PanelText(platform::kStatusPanel); }
  std::string Text(const std::string& id) const { return html_->ById(id)->InnerText(); }
  std::string Markup(const std::string& id) const { return html_->ById(id)->InnerHtml(); }

  base::Settings settings_;
  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  WatchedDesktop desktop_;
  fakes::FakeMainWindow window_{""};
  std::shared_ptr<fakes::FakeHtmlDocument> html_ = std::make_shared<fakes::FakeHtmlDocument>(
      "<div id='installedaddons'></div><div id='installedtransports'></div>"
      "<div id='installedchannels'></div><div id='updatedaddons'></div>"
      "<div id='updatedtransports'></div><div id='updatedchannels'></div>");
  view::PageDocument page_;
  view::ViewState state_;
  view::PageRows rows_{log_, page_, state_};
  view::PageButtons buttons_{log_, page_, state_, window_};
  catalog::UpdateSourceList sources_;
  InstallSession session_;
  DatastoreRegistration registration_{
      {log_, files_, settings_, desktop_, rows_, buttons_, sources_, session_}};
};

/// The texts of a manifest entry's child elements, in the order of their names.
using Elements = std::map<std::string, std::string>;

/// `<kind attributes>` with those child elements; their texts go in as markup.
inline std::string ManifestEntry(const std::string& kind, const std::string& attributes,
                                 const Elements& elements) {
  std::string markup = "<" + kind + " " + attributes + ">";
  for (const auto& [name, text] : elements) {
    markup += "<" + name + ">" + text + "</" + name + ">";
  }
  return markup + "</" + kind + ">";
}

}  // namespace kitbay::install
