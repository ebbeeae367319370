// What the page is given for a row, byte for byte and in order.
#include "page_fixture.h"
#include "recording_page.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RowBuilding : public ::testing::Test {
 protected:
  RowBuilding() { page_.Connect(recorded_); }

  fakes::RecordingErrorLog log_;
  std::shared_ptr<RecordingPage> recorded_ = std::make_shared<RecordingPage>();
  PageDocument page_;
  ViewState state_;
  PageRows rows_{log_, page_, state_};
};

/// The attributes for keyboard and screen reader are set on the complete row.
constexpr const char* kAttributes =
    "CreateElement <div role='treeitem' aria-expanded='false' tabindex='-1' "
    "aria-label='Notes, Version 1.2.0.5'>";
constexpr const char* kTakeOver = "new: MergeAttributes new";

/// Tab reaches the first row of a list.
constexpr const char* kTabStop = "new: SetProperty tabIndex 0";

constexpr const char* kNameLine =
    "new: InsertAdjacentHtml afterBegin "
    "<span id =7  style='margin-right:4pt; margin-left:4pt; width:100%; cursor:default;'>"
    "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>Notes</font>"
    "<font style='font-size:11; font-family:verdana; width:50%; text-align:right;'>"
    "Version 1.2.0.5</font></span>";

TEST_F(RowBuilding, fillDivWritesNameLineThenPanelThenAppendsTheRow) {
  rows_.fillDiv("installedaddons", "Notes", "1.2.0.5", "Keeps notes.", 7, false);
  EXPECT_THAT(
      recorded_->calls(),
      ElementsAre("CreateElement <div id =7 style='padding-bottom:5pt; padding-top:5pt;'>",
                  kNameLine,
                  "new: InsertAdjacentHtml beforeEnd "
                  "<div id ='div7'  style='display:none; width:100%; padding-top:5pt;'>"
                  "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
                  "<font style='font-size:11; font-family:verdana; width:70%; text-align:left;'>"
                  "Keeps notes.&nbsp;&nbsp;&nbsp;</font>"
                  "<font style='font-family:verdana; width:30%; text-align:right;'>"
                  "<input type='button' id='btninstalled' value='Remove' style='width:70; "
                  "height:22; font-family:verdana; font-size:11;'></font></span></div>",
                  "installedaddons: AppendChild new", kAttributes, kTakeOver, kTabStop));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RowBuilding, fillDivOfACoreComponentWritesNoButton) {
  rows_.fillDiv("installedchannels", "Notes", "1.2.0.5", "", 7, true);
  EXPECT_THAT(
      recorded_->calls(),
      ElementsAre("CreateElement <div id =7 style='padding-bottom:5pt; padding-top:5pt;'>",
                  kNameLine,
                  "new: InsertAdjacentHtml beforeEnd "
                  "<div id ='div7'  style='display:none; width:100%; padding-top:5pt;'>"
                  "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
                  "<font style='font-size:11; font-family:verdana; width:70%; text-align:left;'>"
                  "&nbsp;&nbsp;&nbsp;</font>"
                  "<font style='font-family:verdana; width:30%; text-align:right;'>"
                  "</font></span></div>",
                  "installedchannels: AppendChild new", kAttributes, kTakeOver, kTabStop));
}

TEST_F(RowBuilding, TheRemoveButtonOfAnInstalledRowIsNeverOff) {
  rows_.fillDiv("installedaddons", "Notes", "1.2.0.5", "Keeps notes.", 7, false);
  const PageCalls at_rest = recorded_->calls();
  recorded_ = std::make_shared<RecordingPage>();
  page_.Connect(recorded_);
  state_.download_in_progress = true;
  rows_.fillDiv("installedaddons", "Notes", "1.2.0.5", "Keeps notes.", 7, false);
  EXPECT_EQ(recorded_->calls(), at_rest);
}

TEST_F(RowBuilding, fillDivWithUpdatesBuildsItsOwnPanel) {
  rows_.fillDivWithUpdates("installedaddons", "Notes", "1.2.0.5", "Keeps notes.", 7, true, false);
  EXPECT_THAT(
      recorded_->calls(),
      ElementsAre("CreateElement <div id =7 style='padding-bottom:5pt;padding-top:5pt;'>",
                  kNameLine,
                  "new: InsertAdjacentHtml beforeEnd "
                  "<div id ='div7'  style='font-size:11; display:none; width:100%; "
                  "padding-top:5pt;' );'>"
                  "<span style='margin-left:4pt; margin-right:4pt; width:100&; '>"
                  "<font style='font-size:11; font-family:verdana; width:30%; text-align:left;'>"
                  "Keeps notes.&nbsp;&nbsp;&nbsp;</font>"
                  "<font style='font-family:verdana; text-align:right; width:70%; '>"
                  "<input type='button' id='btninstalled' value='Update' style='width:70; "
                  "height:22; font-family:verdana; font-size:11;'></font></span></div>",
                  "installedaddons: AppendChild new",
                  "CreateElement <div role='treeitem' aria-expanded='false' tabindex='-1' "
                  "aria-label='Notes, Version 1.2.0.5, update available' class='hasupdate'>",
                  kTakeOver, kTabStop));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RowBuilding, fillDivWithUpdatesSwitchesTheUpdateButtonOffWhileDownloading) {
  state_.download_in_progress = true;
  rows_.fillDivWithUpdates("installedaddons", "Notes", "1.2.0.5", "", 7, false, false);
  EXPECT_THAT(recorded_->calls().at(2),
              ::testing::EndsWith(
                  "<font style='font-family:verdana; text-align:right; width:70%; '>"
                  "<input type='button' id='btninstalled' value='Remove' style='width:70; "
                  "height:22; font-family:verdana; font-size:11;'>&nbsp&nbsp"
                  "<input type='button' id='btnchange' disabled value='Update' style='width:70; "
                  "height:22; font-family:verdana; font-size:11;'></font></span></div>"));
}

TEST_F(RowBuilding, showUpdatesOffersTheComponentForInstallation) {
  rows_.showUpdates("updatedtransports", "Notes", "1.2.0.5", "Keeps notes.", 7);
  EXPECT_THAT(
      recorded_->calls(),
      ElementsAre("CreateElement <div id =7 style='padding-bottom:5pt; padding-top:5pt;'>",
                  kNameLine,
                  "new: InsertAdjacentHtml beforeEnd "
                  "<div id ='div7' style='font-size:11; display:none; width:100%; "
                  "padding-top:5pt;'>"
                  "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
                  "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>"
                  "Keeps notes.&nbsp;&nbsp;&nbsp;</font>"
                  "<font style='font-family:verdana; text-align:right; width:50%;'>"
                  "<input type='button' id='btninstalled' value='Install' style='width:70; "
                  "height:22; font-family:verdana; font-size:11;'></font></span></div>",
                  "updatedtransports: AppendChild new", kAttributes, kTakeOver, kTabStop));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RowBuilding, showUpdatesSwitchesTheInstallButtonOffWhileDownloading) {
  state_.download_in_progress = true;
  rows_.showUpdates("updatedaddons", "Notes", "1.2.0.5", "", 7);
  EXPECT_THAT(recorded_->calls().at(2),
              ::testing::EndsWith("<font style='font-family:verdana; text-align:right; width:50%;'>"
                                  "<input type='button' id='btninstalled' disabled value='Install' "
                                  "style='width:70; height:22; font-family:verdana; font-size:11;'>"
                                  "</font></span></div>"));
}

TEST_F(RowBuilding, AnEmptyHeadingIsTheMarkupUnchanged) {
  rows_.FillEmptyDivHeader(
      "updatedaddons",
      "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No additional Addons "
      "available right now<hr style='height:1pt; '></font>");
  EXPECT_THAT(recorded_->calls(),
              ElementsAre("updatedaddons: SetInnerHtml <font style='font-family:verdana; "
                          "font-size:11;  margin-right:4pt;'>No additional Addons available right "
                          "now<hr style='height:1pt; '></font>"));
}

TEST_F(RowBuilding, AStatusLineIsTheMessageAndARule) {
  rows_.FillDivStatus("installedaddons", "No Addon is installed.");
  EXPECT_THAT(recorded_->calls(),
              ElementsAre("installedaddons: SetInnerHtml No Addon is installed.<hr "
                          "style='height:1pt; '>"));
}

}  // namespace
}  // namespace kitbay::view
