// Which lists a category fills again, and in which order; the final filling of the page.
#include "page_fixture.h"
#include "two_bars_page.h"
#include "unit/catalog/recording_row_writer.h"
#include "view/page_categories.h"
#include "view/page_ids.h"

namespace kitbay::view {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

/// Records among the rows when its status bar is requested.
class NotingWindow : public fakes::FakeMainWindow {
 public:
  explicit NotingWindow(std::vector<std::string>& calls) : FakeMainWindow(""), calls_(calls) {}

  fakes::FakeStatusBar& status_bar() override {
    calls_.emplace_back("status bar");
    return FakeMainWindow::status_bar();
  }

 private:
  std::vector<std::string>& calls_;
};

/// The page with lists that are recorded instead of shown.
class CategoryLists : public PageTest {
 protected:
  CategoryLists() {
    Show(kTwoBarsPage);
    InstallDatastore(kSmallDatastore);
    OfferManifest(kSmallManifest);
  }

  /// The headings and rows that were written, and the status bar, in order: "installedaddons" for a
  /// heading, "installedaddons Notes" for a row.
  std::vector<std::string> Written() const {
    std::vector<std::string> written;
    for (const std::string& call : noted_rows_.calls) {
      const std::string arguments = call.substr(call.find(' ') + 1);
      const std::string container = arguments.substr(0, arguments.find('|'));
      if (call == "status bar") {
        written.push_back(call);
      } else if (call.starts_with("FillDivHeader")) {
        written.push_back(container);
      } else if (call.starts_with("fillDiv ")) {
        const std::string rest = arguments.substr(container.size() + 1);
        written.push_back(container + " " + rest.substr(0, rest.find('|')));
      }
    }
    return written;
  }

  catalog::RecordingRowWriter noted_rows_;
  catalog::InstalledComponents noted_local_{log_, components_.catalog_files, components_.versions,
                                            noted_rows_};
  catalog::AvailableUpdates noted_available_{log_, components_.catalog_files, components_.versions,
                                             components_.shown, noted_rows_};
  catalog::InstalledWithUpdates noted_installed_{
      log_,       components_.catalog_files, settings_,
      sources_,   noted_available_,          components_.shown,
      noted_rows_};
  catalog::NewComponentListing noted_new_{log_, components_.catalog_files, sources_,
                                          components_.new_components, noted_rows_};
  NotingWindow noting_window_{noted_rows_.calls};
  PageButtons noted_buttons_{log_, page_, state_, noting_window_};
  PageCategories noted_{{log_, page_, state_, components_.catalog_files, noted_local_,
                         noted_installed_, noted_new_, noted_buttons_}};
};

TEST_F(CategoryLists, OneRefreshReadsEachFileOnce) {
  for (const char* name : {"second.xml", "third.xml"}) {
    sources_.UpdateSources.push_back(std::string("updates.example/") + name);
    files_.AddFile(std::string("C:\\Ovalink\\Kitbay\\") + name, kSmallManifest);
  }
  const std::vector<std::string> once = {
      "Read C:\\Ovalink\\Datastore\\olregistry.xml", "Read C:\\Ovalink\\Kitbay\\list.xml",
      "Read C:\\Ovalink\\Kitbay\\second.xml", "Read C:\\Ovalink\\Kitbay\\third.xml",
      "Read C:\\Users\\Ana\\Ovalink\\CustomData\\CustomRegistry.xml"};
  categories_.ShowDetails();
  EXPECT_THAT(files_.operations(), UnorderedElementsAreArray(once));
  At(kCategory)->ChildNode(kUpdatesControl)->SetDisabled(false);
  std::size_t before = files_.operation_count();
  categories_.ShowInstalledCategory();
  EXPECT_EQ(files_.operation_count() - before, once.size());
  before = files_.operation_count();
  categories_.ShowUpdatedCategory();
  EXPECT_EQ(files_.operation_count() - before, once.size());
}

TEST_F(CategoryLists, WhileTheListsAreNotCurrentTheInstalledCategoryListsWhatIsLocal) {
  OfferManifest("");
  noted_.ShowInstalledCategory();
  EXPECT_THAT(Written(), ElementsAre("installedaddons", "installedaddons Notes",
                                     "installedtransports", "installedtransports Relay",
                                     "installedchannels", "installedchannels News"));
}

TEST_F(CategoryLists, WhileTheListsAreCurrentTheInstalledCategoryListsWithUpdates) {
  state_.installed_lists_current = true;
  noted_.ShowInstalledCategory();
  EXPECT_THAT(Written(), ElementsAre("installedaddons", "installedaddons Notes",
                                     "installedchannels", "installedchannels News",
                                     "installedtransports", "installedtransports Relay"));
}

TEST_F(CategoryLists, TheInstalledCategoryLeavesTheFlagOfTheLists) {
  noted_.ShowInstalledCategory();
  EXPECT_FALSE(state_.installed_lists_current);
  state_.installed_lists_current = true;
  noted_.ShowInstalledCategory();
  EXPECT_TRUE(state_.installed_lists_current);
}

TEST_F(CategoryLists, TheUpdatesCategoryListsAddonsTransportsChannels) {
  noted_.ShowUpdatedCategory();
  EXPECT_THAT(Written(), ElementsAre("updatedaddons", "updatedtransports", "updatedchannels"));
}

TEST_F(CategoryLists, ShowDetailsFillsEveryListInOrder) {
  noted_.ShowDetails();
  EXPECT_THAT(Written(), ElementsAre("installedchannels", "installedchannels News", "status bar",
                                     "installedtransports", "installedtransports Relay",
                                     "installedaddons", "installedaddons Notes", "updatedaddons",
                                     "updatedchannels", "updatedtransports"));
  EXPECT_TRUE(state_.installed_lists_current);
}

TEST_F(CategoryLists, KindsThatNoSourceHasEntriesOfAreListedFromTheLocalFiles) {
  state_.installed_lists_current = true;
  OfferManifest("<components/>");
  noted_.ShowInstalledCategory();
  EXPECT_THAT(Written(),
              ElementsAre("installedaddons", "installedaddons Notes", "installedchannels",
                          "installedchannels", "installedchannels News", "installedtransports",
                          "installedtransports Relay"));
}

class Details : public PageTest {
 protected:
  Details() {
    Show(kTwoBarsPage);
    InstallDatastore(kSmallDatastore);
    OfferManifest(kSmallManifest);
  }
};

TEST_F(Details, EndTheProgressInTheStatusBar) {
  window_.status_bar().SetPanelText(platform::kStatusPanel, "Getting information");
  window_.progress_bar().SetVisible(true);
  categories_.ShowDetails();
  EXPECT_EQ(window_.status_bar().PanelText(platform::kStatusPanel), "");
  EXPECT_FALSE(window_.progress_bar().visible());
}

TEST_F(Details, UnderInstalledPressItsControlAndLeaveWhatIsShown) {
  tabs_.ShowTransports("installedaddons", "installedchannels", "installedtransports");
  categories_.ShowDetails();
  EXPECT_EQ(At("installed")->Style("border"), "2px inset");
  EXPECT_EQ(At("update")->Style("border"), "2px outset");
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "", "none"));
  EXPECT_EQ(Display("imgtab"), "");
  EXPECT_EQ(Display("tabencloser"), "none");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Details, UnderUpdatesPressItsControlAndShowItAgain) {
  state_.updates_category = true;
  tabs_.showImage("addons", At("tabencloser"));
  categories_.ShowDetails();
  EXPECT_EQ(At("update")->Style("border"), "2px inset");
  EXPECT_EQ(At("installed")->Style("border"), "2px outset");
  EXPECT_THAT(Displays("installed"), Each("none"));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  EXPECT_EQ(Display("imgtab"), "none");
  EXPECT_EQ(Display("tabencloser"), "");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Details, ListedDuringADownloadHaveTheirButtonsOff) {
  state_.download_in_progress = true;
  categories_.ShowDetails();
  EXPECT_TRUE(Button("installedaddons", 1)->Disabled());
  EXPECT_TRUE(Button("installedchannels", 1)->Disabled());
  EXPECT_TRUE(Button("updatedchannels", 1)->Disabled());
  EXPECT_TRUE(state_.download_in_progress);
}

TEST_F(Details, HideTheTabsOfKindsWithNothingOnOffer) {
  OfferManifest(fakes::ManifestText(
      base::ComponentKind::kChannel,
      fakes::OfferText(base::ComponentKind::kChannel, {.id = "music", .name = "Music"})));
  categories_.ShowDetails();
  EXPECT_EQ(At("tabencloser")->Child(0)->Style("display"), "");
  EXPECT_EQ(At("tabencloser")->Child(1)->Style("display"), "none");
  EXPECT_EQ(At("tabencloser")->Child(2)->Style("display"), "none");
  EXPECT_EQ(At("itabencloser")->Child(1)->Style("display"), "");
}

TEST_F(Details, BringTheBarOfTheUpdatesHiddenAndOnce) {
  At("imgtab1")->SetInnerHtml("");
  categories_.ShowDetails();
  categories_.ShowDetails();
  ASSERT_EQ(At("imgtab1")->ChildNodeCount(), 1);
  EXPECT_EQ(At("imgtab1")->ChildNode(0)->Id(), "tabencloser");
  EXPECT_EQ(Display("tabencloser"), "none");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Details, LeaveATabsClickWithoutAnotherListing) {
  categories_.ShowDetails();
  At("installedtransports")->SetInnerHtml("<p>kept</p>");
  document_->set_event_source(At("itabencloser")->Child(1));
  EXPECT_TRUE(tabs_.ShowInstalledTab());
  EXPECT_EQ(At("installedtransports")->InnerText(), "kept");
}

TEST_F(Details, WithoutAControlAreLoggedAfterTheListsAreFilled) {
  At("installed")->RemoveNode(true);
  categories_.ShowDetails();
  EXPECT_EQ(At("updatedtransports")->ChildNodeCount(), 2);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowDetails", 91, kNotSet)));
}

}  // namespace
}  // namespace kitbay::view
