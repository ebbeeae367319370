// The page's buttons while a download or an installation runs.
#include "view/page_buttons.h"

#include "page_fixture.h"
#include "two_bars_page.h"

namespace kitbay::view {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kInstalledLists[] = {"installedaddons", "installedtransports",
                                           "installedchannels"};
constexpr const char* kUpdatedLists[] = {"updatedaddons", "updatedtransports", "updatedchannels"};

class PageButtonsTest : public PageTest {
 protected:
  PageButtonsTest() { Show(kTwoBarsPage); }

  /// Two installed rows under a heading, the second with a Remove and an Update button.
  void FillInstalled(const std::string& container) {
    rows_.FillDivHeader(container, "itabencloser", "Heading");
    rows_.fillDiv(container, "Notes", "1", "", 1, false);
    rows_.fillDivWithUpdates(container, "Polls", "1", "", 2, false, false);
  }

  /// Two new components under a heading, the second with two buttons.
  void FillUpdated(const std::string& container) {
    rows_.FillDivHeader(container, "tabencloser", "Heading");
    rows_.showUpdates(container, "Notes", "1", "", 1);
    rows_.fillDivWithUpdates(container, "Polls", "1", "", 2, false, false);
  }

  void FillAll() {
    for (const char* list : kInstalledLists) {
      FillInstalled(list);
    }
    for (const char* list : kUpdatedLists) {
      FillUpdated(list);
    }
  }

  /// Whether each of the three buttons of a list filled that way is disabled.
  std::vector<bool> Off(const std::string& container) const {
    return {Button(container, 1)->Disabled(), Button(container, 2, 0)->Disabled(),
            Button(container, 2, 1)->Disabled()};
  }
};

TEST_F(PageButtonsTest, DisableOtherDownloadSwitchesTheFirstButtonOfEachNewComponentOff) {
  FillAll();
  buttons_.DisableOtherDownload();
  for (const char* list : kUpdatedLists) {
    EXPECT_THAT(Off(list), ElementsAre(true, true, false)) << list;
  }
  for (const char* list : kInstalledLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  EXPECT_TRUE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, EnableOtherDownloadSwitchesThemOnAgain) {
  FillAll();
  buttons_.DisableOtherDownload();
  buttons_.EnableOtherDownload();
  for (const char* list : kUpdatedLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, EnableOtherDownloadLeavesASecondButtonAsItIs) {
  FillAll();
  Button("updatedaddons", 2, 1)->SetDisabled(true);
  buttons_.EnableOtherDownload();
  EXPECT_THAT(Off("updatedaddons"), ElementsAre(false, false, true));
}

TEST_F(PageButtonsTest, DisableOtherUpdatedDownloadSwitchesEveryButtonOfTheInstalledOff) {
  FillAll();
  buttons_.DisableOtherUpdatedDownload();
  for (const char* list : kInstalledLists) {
    EXPECT_THAT(Off(list), Each(true)) << list;
  }
  for (const char* list : kUpdatedLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  EXPECT_TRUE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, EnableOtherUpdatedDownloadSwitchesThemOnAgain) {
  FillAll();
  buttons_.DisableOtherUpdatedDownload();
  buttons_.EnableOtherUpdatedDownload();
  for (const char* list : kInstalledLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, ButtonsMadeDuringADownloadComeOnWithTheOthers) {
  state_.download_in_progress = true;
  FillAll();
  EXPECT_THAT(Off("updatedchannels"), ElementsAre(true, false, true));
  EXPECT_THAT(Off("installedchannels"), ElementsAre(false, false, true));
  buttons_.EnableOtherDownload();
  buttons_.EnableOtherUpdatedDownload();
  EXPECT_FALSE(Button("updatedchannels", 1)->Disabled());
  EXPECT_THAT(Off("installedchannels"), Each(false));
}

TEST_F(PageButtonsTest, WhatIsListedAgainDuringADownloadIsSwitchedOffAgain) {
  FillAll();
  state_.download_in_progress = true;
  FillAll();
  buttons_.DisableRelisted();
  for (const char* list : kInstalledLists) {
    EXPECT_THAT(Off(list), Each(true)) << list;
  }
  for (const char* list : kUpdatedLists) {
    EXPECT_THAT(Off(list), ElementsAre(true, true, true)) << list;
  }
  EXPECT_TRUE(state_.download_in_progress);
}

TEST_F(PageButtonsTest, WhatIsListedAgainWithoutADownloadStaysOn) {
  FillAll();
  buttons_.DisableRelisted();
  for (const char* list : kInstalledLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  for (const char* list : kUpdatedLists) {
    EXPECT_THAT(Off(list), Each(false)) << list;
  }
  EXPECT_FALSE(state_.download_in_progress);
}

/// Calls each of the four procedures.
void SwitchAllWays(PageButtons& buttons) {
  buttons.DisableOtherDownload();
  buttons.EnableOtherDownload();
  buttons.EnableOtherUpdatedDownload();
  buttons.DisableOtherUpdatedDownload();
  buttons.DisableOtherDownload();
}

TEST_F(PageButtonsTest, ListsWithoutContentArePassedOver) {
  FillInstalled("installedchannels");
  FillUpdated("updatedchannels");
  SwitchAllWays(buttons_);
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(Off("installedchannels"), Each(true));
  EXPECT_THAT(Off("updatedchannels"), ElementsAre(true, true, false));
}

TEST_F(PageButtonsTest, ListsOfAHeadingOnlyArePassedOver) {
  FillAll();
  rows_.FillDivHeader("installedaddons", "itabencloser", "Heading");
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  SwitchAllWays(buttons_);
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(Off("installedtransports"), Each(true));
  EXPECT_THAT(Off("updatedtransports"), ElementsAre(true, true, false));
}

TEST_F(PageButtonsTest, ListsOfAStatusLineArePassedOver) {
  FillAll();
  rows_.FillDivStatus("installedtransports", "No Messaging service is installed.");
  rows_.FillEmptyDivHeader("updatedtransports", "<font>Nothing<hr style='height:1pt; '></font>");
  SwitchAllWays(buttons_);
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(Off("installedchannels"), Each(true));
  EXPECT_THAT(Off("updatedchannels"), ElementsAre(true, true, false));
}

TEST_F(PageButtonsTest, RowsWithoutAButtonArePassedOver) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Heading");
  rows_.fillDiv("installedaddons", "Core", "1", "", 1, true);
  rows_.fillDiv("installedaddons", "Notes", "1", "", 2, false);
  buttons_.DisableOtherUpdatedDownload();
  EXPECT_TRUE(Button("installedaddons", 2)->Disabled());
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  rows_.fillDiv("updatedaddons", "Core", "1", "", 1, true);
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 2);
  buttons_.DisableOtherDownload();
  EXPECT_TRUE(Button("updatedaddons", 2)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, WhatStandsBesideTheButtonsIsLeft) {
  FillAll();
  for (const char* list : {"installedaddons", "updatedaddons"}) {
    Button(list, 2)->ParentElement()->InsertAdjacentHtml("afterBegin", "<b>New</b>");
  }
  buttons_.DisableOtherDownload();
  buttons_.DisableOtherUpdatedDownload();
  for (const char* list : {"installedaddons", "updatedaddons"}) {
    EXPECT_EQ(fakes::FakeHtmlDocument::Outer(Button(list, 2, 0)), "<b>New</b>");
    EXPECT_TRUE(Button(list, 2, 1)->Disabled());
  }
  EXPECT_TRUE(Button("installedaddons", 2, 2)->Disabled());
  EXPECT_FALSE(Button("updatedaddons", 2, 2)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, HalfBuiltRowsArePassedOver) {
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  At("updatedaddons")->InsertAdjacentHtml("beforeEnd", "<div id=1><span id=1>Half</span></div>");
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 2);
  buttons_.DisableOtherDownload();
  EXPECT_TRUE(Button("updatedaddons", 2)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, AMissingListIsLoggedWithATrailingBlankAndEndsTheSwitching) {
  FillAll();
  At("updatedtransports")->RemoveNode(true);
  At("installedtransports")->RemoveNode(true);
  buttons_.DisableOtherDownload();
  buttons_.DisableOtherUpdatedDownload();
  EXPECT_TRUE(Button("updatedaddons", 1)->Disabled());
  EXPECT_FALSE(Button("updatedchannels", 1)->Disabled());
  EXPECT_TRUE(Button("installedaddons", 1)->Disabled());
  EXPECT_FALSE(Button("installedchannels", 1)->Disabled());
  EXPECT_TRUE(state_.download_in_progress);
  buttons_.EnableOtherDownload();
  buttons_.EnableOtherUpdatedDownload();
  EXPECT_FALSE(Button("updatedaddons", 1)->Disabled());
  EXPECT_FALSE(Button("installedaddons", 1)->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::DisableOtherDownload ", 91, kNotSet),
                                        Entry("Kitbay::DisableOtherUpdatedDownload ", 91, kNotSet),
                                        Entry("Kitbay::EnableOtherDownload ", 91, kNotSet),
                                        Entry("Kitbay::EnableOtherUpdatedDownload ", 91, kNotSet)));
}

TEST_F(PageButtonsTest, DisableStatusClearsTheSecondPanelAndHidesTheBar) {
  for (const int panel : {1, 2}) {
    window_.status_bar().SetPanelText(panel, "Busy");
  }
  window_.progress_bar().SetVisible(true);
  buttons_.DisableStatus();
  EXPECT_EQ(window_.status_bar().PanelText(1), "Busy");
  EXPECT_EQ(window_.status_bar().PanelText(2), "");
  EXPECT_FALSE(window_.progress_bar().visible());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageButtonsTest, DisableStatusLogsWithATrailingBlank) {
  window_.progress_bar().SetVisible(true);
  window_.calls().FailMember("SetPanelText", base::Failure(-2147467259, "Unspecified error"));
  buttons_.DisableStatus();
  EXPECT_TRUE(window_.progress_bar().visible());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::DisableStatus ", -2147467259, "Unspecified error")));
}

}  // namespace
}  // namespace kitbay::view
