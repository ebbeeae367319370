// Changing and removing the row that was last clicked.
#include "page_fixture.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kRemove =
    "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'>";

class CurrentRow : public PageTest {
 protected:
  CurrentRow() {
    Show(
        "<div id='installedaddons'></div><div id='installedchannels'></div>"
        "<div id='updatedaddons'></div>");
    state_.current_row_id = "7";
    state_.update_in_progress = true;
  }

  void AddInstalled(const std::string& container, std::int16_t row) {
    rows_.fillDivWithUpdates(container, "Notes", "1.0.0.0", "Keeps notes.", row, true, false);
  }
  void AddNew(const std::string& container, std::int16_t row, const std::string& name = "Notes") {
    rows_.showUpdates(container, name, "2.0.0.0", "Keeps notes.", row);
  }

  /// The row at that position in the container.
  platform::HtmlNodeRef Row(const std::string& container, int place = 0) const {
    return At(container)->ChildNode(place);
  }
};

TEST_F(CurrentRow, ModifyDivWritesTheVersionAndTheButtonCell) {
  AddInstalled("installedaddons", 7);
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  const auto row = Row("installedaddons");
  EXPECT_EQ(row->ChildNode(0)->ChildNode(0)->InnerHtml(), "Notes");
  EXPECT_EQ(row->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 2.1.0.0");
  const auto panel_line = row->ChildNode(1)->ChildNode(0);
  EXPECT_EQ(panel_line->ChildNode(0)->InnerHtml(), "Keeps notes.&nbsp;&nbsp;&nbsp;");
  const auto cell = panel_line->ChildNode(1);
  ASSERT_EQ(cell->ChildNodeCount(), 1);
  EXPECT_EQ(cell->ChildNode(0)->Id(), "btninstalled");
  EXPECT_EQ(cell->ChildNode(0)->Value(), "Remove");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, ModifyDivTakesTheMarkOfAnUpdateAwayAndSaysTheNewVersion) {
  AddInstalled("installedaddons", 7);
  ASSERT_EQ(Row("installedaddons")->Property("className"), "hasupdate");
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  EXPECT_EQ(Row("installedaddons")->Property("className"), "");
  EXPECT_EQ(Row("installedaddons")->Property("ariaLabel"), "Notes, Version 2.1.0.0");
}

TEST_F(CurrentRow, ModifyDivWritesTheVersionAsTextAndTheButtonsAsMarkup) {
  AddInstalled("installedaddons", 7);
  rows_.ModifyDiv("installedaddons", "<b>2</b>", "<b>none</b>");
  const auto row = Row("installedaddons");
  EXPECT_EQ(row->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version &lt;b&gt;2&lt;/b&gt;");
  EXPECT_EQ(row->ChildNode(1)->ChildNode(0)->ChildNode(1)->InnerHtml(), "<b>none</b>");
}

TEST_F(CurrentRow, ModifyDivDoesNothingUnlessAComponentIsBeingUpdated) {
  AddInstalled("installedaddons", 7);
  const std::string before = document_->TreeText();
  state_.update_in_progress = false;
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, ModifyDivWithoutARowOfThatNumberInTheContainerChangesNothing) {
  AddInstalled("installedaddons", 7);
  AddInstalled("installedchannels", 8);
  const std::string before = document_->TreeText();
  rows_.ModifyDiv("installedchannels", "2.1.0.0", kRemove);
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, ModifyDivReachesOnlyTheRowInItsContainer) {
  AddInstalled("installedaddons", 7);
  AddInstalled("installedchannels", 7);
  AddNew("updatedaddons", 7);
  rows_.ModifyDiv("installedchannels", "2.1.0.0", kRemove);
  EXPECT_EQ(Row("installedaddons")->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 1.0.0.0");
  EXPECT_EQ(Row("installedchannels")->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 2.1.0.0");
  EXPECT_EQ(Row("updatedaddons")->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 2.0.0.0");
}

TEST_F(CurrentRow, ModifyDivTakesTheRowElementAndNotItsNameLine) {
  AddInstalled("installedaddons", 7);
  rows_.ModifyDiv("7", "2.1.0.0", kRemove);
  EXPECT_EQ(Row("installedaddons")->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 1.0.0.0");
}

TEST_F(CurrentRow, TheLastElementOfThatNumberIsNeverLookedAt) {
  At("installedaddons")->SetInnerHtml("<div id='7'><span>a</span><div><b>x</b></div></div>");
  const std::string before = document_->TreeText();
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  rows_.RemoveDiv("installedaddons");
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, TheElementBeforeTheLastIsLookedAt) {
  At("installedaddons")->SetInnerHtml("<div id='7'><span><b>Notes</b></span></div><b id='7'></b>");
  rows_.RemoveDiv("installedaddons");
  ASSERT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(At("7")->TagName(), "B");
}

TEST_F(CurrentRow, NoElementOfThatNumberIsNoFailure) {
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  rows_.RemoveDiv("installedaddons");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, AHalfBuiltRowKeepsTheVersionThatWasWrittenBeforeTheFailure) {
  At("installedaddons")
      ->SetInnerHtml(
          "<div id='7'><span id='7'><font>Notes</font><font>Version 1</font></span></div>");
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  EXPECT_EQ(Row("installedaddons")->ChildNode(0)->ChildNode(1)->InnerHtml(), "Version 2.1.0.0");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ModifyDiv", 91, kNotSet)));
}

TEST_F(CurrentRow, RemoveDivTakesOnlyTheRowOfItsContainer) {
  AddInstalled("installedaddons", 7);
  AddNew("updatedaddons", 6);
  AddNew("updatedaddons", 7);
  rows_.RemoveDiv("updatedaddons");
  ASSERT_EQ(At("updatedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(Row("updatedaddons")->Id(), "6");
  ASSERT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(Row("installedaddons")->Id(), "7");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, RemoveDivTakesTheRowWithItsSubtree) {
  AddNew("updatedaddons", 7);
  rows_.RemoveDiv("updatedaddons");
  EXPECT_EQ(At("updatedaddons")->InnerHtml(), "");
  EXPECT_EQ(At("div7"), nullptr);
}

TEST_F(CurrentRow, RemoveDivNeedsNoUpdateInProgress) {
  AddNew("updatedaddons", 7);
  state_.update_in_progress = false;
  rows_.RemoveDiv("updatedaddons");
  EXPECT_EQ(At("updatedaddons")->ChildNodeCount(), 0);
}

TEST_F(CurrentRow, RemoveDivLogsUnderItsName) {
  AddNew("updatedaddons", 7);
  document_->FailMember("RemoveNode", base::Failure(-2147467259, "Unspecified error"));
  rows_.RemoveDiv("updatedaddons");
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::RemoveDiv", -2147467259, "Unspecified error")));
}

TEST_F(CurrentRow, WithoutANumberThereIsNone) {
  state_.current_row_id = "";
  At("installedaddons")->SetInnerHtml("<div id=''></div><div id=''></div>");
  const std::string before = document_->TreeText();
  rows_.ModifyDiv("installedaddons", "2.1.0.0", kRemove);
  rows_.RemoveDiv("installedaddons");
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CurrentRow, IsOneOfAtMost32769ElementsOfItsNumber) {
  constexpr int kMost = 32769;
  AddInstalled("installedaddons", 7);
  std::string others;
  for (int i = 3; i <= kMost; ++i) {
    others += "<i id='7'></i>";
  }
  At("installedchannels")->SetInnerHtml(others + "<i id='7'></i>");
  rows_.RemoveDiv("installedaddons");
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::RemoveDiv", 6, "Overflow")));
  At("installedchannels")->SetInnerHtml(others);
  rows_.RemoveDiv("installedaddons");
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 0);
}

/// Row 7 of Notes was clicked among the new addons; then the list was filled again.
class FollowedRow : public CurrentRow {
 protected:
  FollowedRow() {
    state_.current_row_name = "Notes";
    rows_.FillDivHeader("updatedaddons", "installedchannels", "<b>Notes</b><i>x</i>");
  }
};

TEST_F(FollowedRow, KeepsItsNumberWhileThatShowsItsName) {
  AddNew("updatedaddons", 6);
  AddNew("updatedaddons", 7);
  rows_.FollowCurrentRow("updatedaddons");
  EXPECT_EQ(state_.current_row_id, "7");
}

TEST_F(FollowedRow, IsTheFirstOfItsNameIfTheNumberIsAnotherRows) {
  AddNew("updatedaddons", 4, "Notes ");
  AddNew("updatedaddons", 5);
  AddNew("updatedaddons", 6);
  AddNew("updatedaddons", 7, "Polls");
  rows_.FollowCurrentRow("updatedaddons");
  EXPECT_EQ(state_.current_row_id, "5");
}

TEST_F(FollowedRow, IsTheFirstOfItsNameIfNoRowHasTheNumber) {
  AddNew("updatedaddons", 1);
  rows_.FollowCurrentRow("updatedaddons");
  EXPECT_EQ(state_.current_row_id, "1");
}

TEST_F(FollowedRow, IsNoneWhenNoRowShowsItsName) {
  AddNew("updatedaddons", 7, "Polls");
  AddInstalled("installedaddons", 7);
  rows_.FollowCurrentRow("updatedaddons");
  EXPECT_EQ(state_.current_row_id, "");
  rows_.RemoveDiv("updatedaddons");
  EXPECT_EQ(At("updatedaddons")->ChildNodeCount(), 2);
}

TEST_F(FollowedRow, IsNoneWhenThePageHasNoSuchList) {
  rows_.FollowCurrentRow("elsewhere");
  EXPECT_EQ(state_.current_row_id, "");
}

TEST_F(FollowedRow, IsKnownWhetherItIsOpenOrHidden) {
  state_.current_row_name = "My  <b>Notes</b>";
  AddNew("updatedaddons", 3, "My  <b>Notes</b>");
  tabs_.HideOthers(At("updatedaddons")->Child(1)->Child(0));
  At("updatedaddons")->SetStyle("display", "none");
  rows_.FollowCurrentRow("updatedaddons");
  EXPECT_EQ(state_.current_row_id, "3");
}

}  // namespace
}  // namespace kitbay::view
