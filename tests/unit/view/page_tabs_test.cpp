#include "base/text.h"
#include "page_fixture.h"
#include "two_bars_page.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class PageTabsTest : public PageTest {
 protected:
  PageTabsTest() {
    Show(kTwoBarsPage);
    InstallDatastore(kSmallDatastore);
  }

  /// Makes the tab at that position in a bar the source of the click.
  void ClickIsOn(const std::string& bar, int place) {
    document_->set_event_source(At(bar)->Child(place));
  }
};

constexpr int kChannelsTab = 0;
constexpr int kTransportsTab = 1;
constexpr int kAddonsTab = 2;

TEST_F(PageTabsTest, showImageGivesTheClickedTabItsSelectedLookAndTheOthersTheOther) {
  tabs_.showImage("addons", At("itabencloser"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  tabs_.showImage("trans", At("itabencloser"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  tabs_.showImage("channels", At("itabencloser"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
}

TEST_F(PageTabsTest, showImageLeavesTheOtherBar) {
  tabs_.showImage("addons", At("itabencloser"));
  EXPECT_THAT(Images("tabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
}

TEST_F(PageTabsTest, showImageWithoutABarIsLogged) {
  tabs_.showImage("addons", nullptr);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::showImage", 91, kNotSet)));
}

TEST_F(PageTabsTest, ShowAddonsShowsTheAddonsAlone) {
  At("installedaddons")->SetStyle("display", "none");
  tabs_.ShowAddons("installedaddons", "installedchannels", "installedtransports");
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "", ""));
}

TEST_F(PageTabsTest, ShowTransportsShowsTheTransportsAlone) {
  At("updatedtransports")->SetStyle("display", "none");
  tabs_.ShowTransports("updatedaddons", "updatedchannels", "updatedtransports");
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "", "none"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "", ""));
}

TEST_F(PageTabsTest, ShowChannelsShowsTheChannelsAlone) {
  At("installedchannels")->SetStyle("display", "none");
  tabs_.ShowChannels("installedaddons", "installedchannels", "installedtransports");
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", ""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, AnAbsentListIsLoggedUnderTheProceduresName) {
  tabs_.ShowAddons("gone", "installedchannels", "installedtransports");
  tabs_.ShowTransports("installedaddons", "installedchannels", "gone");
  tabs_.ShowChannels("installedaddons", "gone", "installedtransports");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowAddons", 91, kNotSet),
                                        Entry("Kitbay::ShowTransports", 91, kNotSet),
                                        Entry("Kitbay::ShowChannels", 91, kNotSet)));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "", ""));
}

TEST_F(PageTabsTest, ShowOnlyInstalledHidesTheListsOfTheUpdates) {
  tabs_.ShowOnlyInstalled();
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", "none"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "", ""));
}

TEST_F(PageTabsTest, ShowOnlyInstalledLogsWithATrailingBlankAndKeepsWhatIsHidden) {
  At("updatedchannels")->RemoveNode(true);
  tabs_.ShowOnlyInstalled();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowOnlyInstalled ", 91, kNotSet)));
  EXPECT_EQ(Display("updatedaddons"), "none");
  EXPECT_EQ(Display("updatedtransports"), "");
}

TEST_F(PageTabsTest, AClickOnAddonsShowsThemAndSelectsTheTab) {
  ClickIsOn("itabencloser", kAddonsTab);
  EXPECT_TRUE(tabs_.ShowInstalledTab());
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", "none"));
}

TEST_F(PageTabsTest, AClickOnTransShowsTheTransports) {
  ClickIsOn("itabencloser", kTransportsTab);
  EXPECT_TRUE(tabs_.ShowInstalledTab());
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "", "none"));
}

TEST_F(PageTabsTest, AClickOnChannelsShowsTheChannels) {
  ClickIsOn("itabencloser", kChannelsTab);
  EXPECT_TRUE(tabs_.ShowInstalledTab());
  EXPECT_THAT(Images("itabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", ""));
}

TEST_F(PageTabsTest, AClickOnATabListsItsKindAgainWhileTheListsAreNotCurrent) {
  ClickIsOn("itabencloser", kAddonsTab);
  tabs_.ShowInstalledTab();
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 2);
  EXPECT_EQ(At("installedtransports")->InnerHtml(), "");
  ClickIsOn("itabencloser", kTransportsTab);
  tabs_.ShowInstalledTab();
  EXPECT_EQ(At("installedtransports")->ChildNodeCount(), 2);
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
  ClickIsOn("itabencloser", kChannelsTab);
  tabs_.ShowInstalledTab();
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, AClickOnATabLeavesItsListWhileTheListsAreCurrent) {
  state_.installed_lists_current = true;
  for (const int tab : {kAddonsTab, kTransportsTab, kChannelsTab}) {
    ClickIsOn("itabencloser", tab);
    EXPECT_TRUE(tabs_.ShowInstalledTab());
  }
  EXPECT_EQ(At("installedaddons")->InnerHtml(), "");
  EXPECT_EQ(At("installedtransports")->InnerHtml(), "");
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
}

TEST_F(PageTabsTest, AClickOnATabOfAnotherBarDoesNothingAndYieldsFalse) {
  const std::string before = document_->TreeText();
  ClickIsOn("tabencloser", kAddonsTab);
  EXPECT_FALSE(tabs_.ShowInstalledTab());
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, AClickOnSomethingElseInTheBarDoesNothingAndYieldsFalse) {
  At("itabencloser")->InsertAdjacentHtml("beforeEnd", "<img id='Trans'>");
  const std::string before = document_->TreeText();
  ClickIsOn("itabencloser", 3);
  EXPECT_FALSE(tabs_.ShowInstalledTab());
  EXPECT_EQ(document_->TreeText(), before);
}

TEST_F(PageTabsTest, ATabImageWithoutAParentDoesNothing) {
  document_->set_event_source(document_->CreateElement("<img id='trans'>"));
  EXPECT_FALSE(tabs_.ShowInstalledTab());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, ShowOnlyUpdatedHidesTheInstalledLists) {
  tabs_.ShowOnlyUpdated();
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", "none"));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "", ""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, ShowOnlyUpdatedLogsWithATrailingBlankAndKeepsWhatIsHidden) {
  At("installedtransports")->RemoveNode(true);
  tabs_.ShowOnlyUpdated();
  EXPECT_EQ(Display("installedaddons"), "none");
  EXPECT_EQ(Display("installedchannels"), "");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowOnlyUpdated ", 91, kNotSet)));
}

TEST_F(PageTabsTest, AClickInTheUpdatesBarShowsAddonsAlone) {
  ClickIsOn("tabencloser", kAddonsTab);
  EXPECT_TRUE(tabs_.ShowUpdatedTab());
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", "none"));
}

TEST_F(PageTabsTest, AClickInTheUpdatesBarShowsTransportsAlone) {
  ClickIsOn("tabencloser", kTransportsTab);
  EXPECT_TRUE(tabs_.ShowUpdatedTab());
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "", "none"));
}

TEST_F(PageTabsTest, AClickInTheUpdatesBarShowsChannelsAlone) {
  tabs_.showImage("trans", At("tabencloser"));
  ClickIsOn("tabencloser", kChannelsTab);
  EXPECT_TRUE(tabs_.ShowUpdatedTab());
  EXPECT_THAT(Images("tabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", ""));
}

TEST_F(PageTabsTest, AClickInTheUpdatesBarListsNothingAgain) {
  OfferManifest(kSmallManifest);
  for (const int tab : {kAddonsTab, kTransportsTab, kChannelsTab}) {
    ClickIsOn("tabencloser", tab);
    EXPECT_TRUE(tabs_.ShowUpdatedTab());
  }
  for (const char* list : {"installedaddons", "installedtransports", "installedchannels",
                           "updatedaddons", "updatedtransports", "updatedchannels"}) {
    EXPECT_EQ(At(list)->InnerHtml(), "") << list;
  }
}

TEST_F(PageTabsTest, AClickInTheInstalledBarIsNotOneInTheUpdatesBar) {
  ClickIsOn("itabencloser", kAddonsTab);
  const std::string before = document_->TreeText();
  EXPECT_FALSE(tabs_.ShowUpdatedTab());
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, WithoutAnEventAClickInTheUpdatesBarIsLoggedAndYieldsFalse) {
  EXPECT_FALSE(tabs_.ShowUpdatedTab());
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowUpdatedTab", 91, kNotSet)));
}

TEST_F(PageTabsTest, WithoutAnEventAClickOnATabIsLoggedAndYieldsFalse) {
  EXPECT_FALSE(tabs_.ShowInstalledTab());
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowInstalledTab", 91, kNotSet)));
}

TEST_F(PageTabsTest, ShowLocalDataSwitchesTheUpdatesOffAndListsTheChannels) {
  tabs_.ShowLocalData();
  EXPECT_TRUE(At("update")->Disabled());
  EXPECT_FALSE(At("installed")->Disabled());
  ASSERT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_THAT(At("installedchannels")->ChildNode(0)->InnerHtml(),
              StartsWith("Currently Installed Channels<hr"));
  EXPECT_EQ(At("installedchannels")->ChildNode(1)->ChildNode(0)->ChildNode(0)->InnerHtml(), "News");
  EXPECT_EQ(At("installedaddons")->InnerHtml(), "");
  EXPECT_EQ(At("installedtransports")->InnerHtml(), "");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, LocalDataAreNotCurrentAndATabListsItsKindAgain) {
  state_.installed_lists_current = true;
  tabs_.ShowLocalData();
  EXPECT_FALSE(state_.installed_lists_current);
  ClickIsOn("itabencloser", kAddonsTab);
  tabs_.ShowInstalledTab();
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 2);
}

TEST_F(PageTabsTest, WhatIsListedDuringADownloadHasItsButtonsOff) {
  state_.download_in_progress = true;
  tabs_.ShowLocalData();
  EXPECT_TRUE(Button("installedchannels", 1)->Disabled());
  ClickIsOn("itabencloser", kAddonsTab);
  tabs_.ShowInstalledTab();
  EXPECT_TRUE(Button("installedaddons", 1)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageTabsTest, ShowLocalDataWithoutAnUpdatesControlIsLoggedAndListsNothing) {
  At("category")->SetInnerHtml("<i></i><i></i><i></i>");
  tabs_.ShowLocalData();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowLocalData", 91, kNotSet)));
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
}

}  // namespace
}  // namespace kitbay::view
