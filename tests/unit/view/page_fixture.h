#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_html_document.h"
#include "fakes/fake_main_window.h"
#include "fakes/fake_version_resource.h"
#include "fakes/manifest_text.h"
#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "view/component_page.h"

namespace kitbay::view {

using fakes::Entry;
using fakes::kNotSet;

/// A page in memory with the procedures that write it, on an installation without components.
class PageTest : public ::testing::Test {
 protected:
  PageTest() {
    settings_.InstallFolder = "C:\\Ovalink";
    settings_.CustomDataFolder = "C:\\Users\\Ana\\Ovalink\\CustomData";
  }

  void Show(const std::string& markup) {
    document_ = std::make_shared<fakes::FakeHtmlDocument>(markup);
    page_.Connect(document_);
  }

  void InstallDatastore(const std::string& content) {
    files_.AddFile("C:\\Ovalink\\Datastore\\olregistry.xml", content);
  }

  /// Adds an update source that has answered with that manifest.
  void OfferManifest(const std::string& content) {
    sources_.UpdateSources = {"updates.example/list.xml"};
    files_.AddFile("C:\\Ovalink\\Kitbay\\list.xml", content);
  }

  platform::HtmlNodeRef At(const std::string& id) const { return document_->ById(id); }

  std::string Display(const std::string& id) const { return At(id)->Style("display"); }

  /// The display styles of the three lists of a category: addons, transports, channels.
  std::vector<std::string> Displays(const std::string& category) const {
    return {Display(category + "addons"), Display(category + "transports"),
            Display(category + "channels")};
  }

  /// The image files of a bar, in order.
  std::vector<std::string> Images(const std::string& bar) const {
    std::vector<std::string> images;
    for (int i = 0; i < At(bar)->ChildCount(); ++i) {
      images.push_back(base::AfterLastSlash(At(bar)->Child(i)->Src()));
    }
    return images;
  }

  /// A button of a row. A list's heading and rows count from 0, and so do the buttons.
  platform::HtmlNodeRef Button(const std::string& container, int row, int button = 0) const {
    return At(container)->Child(row)->Child(1)->Child(0)->Child(1)->Child(button);
  }

  base::Settings settings_;
  fakes::MemoryFiles files_;
  fakes::FakeVersionResource resources_;
  fakes::RecordingErrorLog log_;
  std::shared_ptr<fakes::FakeHtmlDocument> document_;
  fakes::FakeMainWindow window_{""};
  fakes::FakeClock clock_;
  ComponentPage components_{log_, files_, clock_, settings_, resources_, window_};
  PageDocument& page_{components_.document};
  ViewState& state_{components_.state};
  PageRows& rows_{components_.rows};
  catalog::UpdateSourceList& sources_{components_.sources};
  PageTabs& tabs_{components_.tabs};
  PageButtons& buttons_{components_.buttons};
  PageCategories& categories_{components_.categories};
};

}  // namespace kitbay::view
