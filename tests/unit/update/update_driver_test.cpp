#include "update/update_driver.h"

#include <gmock/gmock.h>

#include "fakes/fake_html_document.h"
#include "fakes/fake_version_resource.h"
#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "view/page_rows.h"

namespace kitbay::update {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kPage =
    "<html><body><div id='category'><b>Components</b><input id='installed'><hr>"
    "<input id='update'></div><div id='imgtab'></div><div id='installedchannels'></div>"
    "</body></html>";

class DirectoryPreference : public testing::Test {
 protected:
  DirectoryPreference() {
    settings_.InstallFolder = "C:\\Suite";
    settings_.CustomDataFolder = "C:\\User\\Ovalink\\CustomData";
    files_.AddFile(
        "C:\\Suite\\Datastore\\olregistry.xml",
        "<root><channels><channel id='news' name='News' version='2'>"
        "<description>Headlines</description><core>0</core></channel></channels></root>");
    page_.Connect(html_);
  }

  void SetSources(const std::string& preferences) {
    files_.AddFile("C:\\User\\Ovalink\\updatepreference.xml",
                   "<root><preferences>" + preferences + "</preferences></root>");
  }

  bool InstalledViewIsShown() const {
    return html_->ById("installedchannels")->InnerText().find("News") != std::string::npos &&
           html_->ById("update")->Disabled();
  }

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  base::Settings settings_;
  catalog::UpdateSourceList sources_;
  UpdateSourceFile source_file_{log_, files_, settings_, sources_};
  std::shared_ptr<fakes::FakeHtmlDocument> html_ = std::make_shared<fakes::FakeHtmlDocument>(kPage);
  view::PageDocument page_;
  view::ViewState state_;
  view::PageRows rows_{log_, page_, state_};
  catalog::RegistryFiles registry_files_{files_, settings_};
  fakes::FakeVersionResource resources_;
  catalog::FileVersions versions_{log_, settings_, resources_};
  catalog::InstalledComponents installed_{log_, registry_files_, versions_, rows_};
  view::PageTabs tabs_{log_, page_, state_, installed_};
  UpdateDriver driver_{log_, source_file_, sources_, tabs_};
};

TEST_F(DirectoryPreference, EmptyFirstSourceShowsLocalData) {
  SetSources("<preference url=''/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(InstalledViewIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, FreshUserWithAnEmptySeedGetsOneEmptySourceAndTheInstalledView) {
  files_.AddFolder("C:\\User\\Ovalink");
  files_.AddFile("C:\\Suite\\Kitbay\\DirectoryPreference.xml",
                 "<root><preferences><preference url=''/></preferences></root>");
  fakes::MemoryFileSystemObject file_system(files_);
  source_file_.MakeDirectoryPreferenceFile(&file_system);
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(InstalledViewIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, FirstSourceEndingInASlashShowsLocalDataEvenWithFurtherSources) {
  SetSources("<preference url='updates.example/'/><preference url='other.example/a.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(InstalledViewIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("updates.example/", "other.example/a.xml"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, FirstSourceWithoutACachedManifestShowsLocalData) {
  SetSources("<preference url='updates.example/components.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(InstalledViewIsShown()) << html_->TreeText();
}

TEST_F(DirectoryPreference, MissingSourceFileIsASubscriptErrorAndLeavesThePage) {
  const std::string before = html_->TreeText();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_EQ(html_->TreeText(), before);
  EXPECT_THAT(log_.entries,
              ElementsAre(fakes::RecordingErrorLog::Entry("Kitbay::GetDirectoryPreferenceFile", 9,
                                                          "Subscript out of range")));
}

TEST_F(DirectoryPreference, SourceListEmptiedByTheUserIsASubscriptError) {
  SetSources("");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(log_.entries,
              ElementsAre(fakes::RecordingErrorLog::Entry("Kitbay::GetDirectoryPreferenceFile", 9,
                                                          "Subscript out of range")));
}

TEST_F(DirectoryPreference, EachRunMakesTheSourcesPendingOnceMore) {
  SetSources("<preference url=''/>");
  driver_.GetDirectoryPreferenceFile();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("", ""));
}

}  // namespace
}  // namespace kitbay::update
