// Headings and status lines of the lists, and the bars of tab images above them.
#include "page_fixture.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ListHeading : public PageTest {
 protected:
  ListHeading() {
    Show(
        "<span id='itabencloser' style='height:33px'></span><div id='installedaddons'></div>"
        "<div id='imgtab'></div>");
    document_->set_body_client_height(400);
  }
};

TEST_F(ListHeading, TheListBeginsUnderTheBarAndFillsTheRestOfTheWindow) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  EXPECT_EQ(At("installedaddons")->Style("top"), "33px");
  EXPECT_EQ(At("installedaddons")->Style("height"), "367px");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListHeading, TheBarsHeightCountsInPixelsWhateverItsUnit) {
  Show("<span id='itabencloser' style='height:30pt'></span><div id='installedaddons'></div>");
  document_->set_body_client_height(500);
  rows_.FillDivHeader("installedaddons", "itabencloser", "T");
  EXPECT_EQ(At("installedaddons")->Style("top"), "30pt");
  EXPECT_EQ(At("installedaddons")->Style("height"), "460px");
}

TEST_F(ListHeading, ABarWithoutAHeightTakesNothingOfTheWindow) {
  Show("<span id='itabencloser'></span><div id='installedaddons' style='top:9px'></div>");
  document_->set_body_client_height(400);
  rows_.FillDivHeader("installedaddons", "itabencloser", "T");
  EXPECT_EQ(At("installedaddons")->Style("top"), "");
  EXPECT_EQ(At("installedaddons")->Style("height"), "400px");
}

TEST_F(ListHeading, AListInAWindowLowerThanItsBarHasNoHeight) {
  document_->set_body_client_height(20);
  rows_.FillDivHeader("installedaddons", "itabencloser", "T");
  EXPECT_EQ(At("installedaddons")->Style("height"), "0px");
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListHeading, TheTitleIsFollowedByARule) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  const auto list = At("installedaddons");
  ASSERT_EQ(list->ChildNodeCount(), 1);
  const auto heading = list->ChildNode(0);
  EXPECT_EQ(heading->TagName(), "FONT");
  EXPECT_EQ(heading->Style("fontFamily"), "verdana");
  ASSERT_EQ(heading->ChildNodeCount(), 2);
  EXPECT_EQ(heading->Child(0)->TagName(), "HR");
  EXPECT_THAT(heading->InnerHtml(), ::testing::StartsWith("Currently Installed  Addons<hr"));
}

TEST_F(ListHeading, AHeadingClearsTheRowsOfItsList) {
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  rows_.fillDiv("installedaddons", "Polls", "1", "", 2, false);
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(At("1"), nullptr);
  EXPECT_EQ(At("2"), nullptr);
}

TEST_F(ListHeading, WithoutItsBarAHeadingIsLoggedAndTheRowsStay) {
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  rows_.FillDivHeader("installedaddons", "tabencloser", "T");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::FillDivHeader", 91, kNotSet)));
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(At("1")->ParentElement()->Id(), "installedaddons");
}

TEST_F(ListHeading, AFailureInTheMiddleLeavesWhatWasSetBefore) {
  document_->FailMember("BodyClientHeight", base::Failure(-2147467259, "Unspecified error"));
  rows_.FillDivHeader("installedaddons", "itabencloser", "T");
  EXPECT_EQ(At("installedaddons")->Style("top"), "33px");
  EXPECT_EQ(At("installedaddons")->Style("height"), "");
  EXPECT_EQ(At("installedaddons")->InnerHtml(), "");
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::FillDivHeader", -2147467259, "Unspecified error")));
}

TEST_F(ListHeading, AStatusLineTakesThePlaceOfTheRows) {
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  rows_.FillDivStatus("installedaddons", "No Addon is installed.");
  const auto list = At("installedaddons");
  ASSERT_EQ(list->ChildNodeCount(), 2);
  EXPECT_EQ(list->Child(0)->TagName(), "HR");
  EXPECT_THAT(list->InnerHtml(), ::testing::StartsWith("No Addon is installed.<hr"));
}

TEST_F(ListHeading, AnEmptyHeadingTakesThePlaceOfTheRows) {
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  rows_.FillEmptyDivHeader("installedaddons", "<b>None.</b>");
  EXPECT_EQ(At("installedaddons")->InnerHtml(), "<b>None.</b>");
}

TEST_F(ListHeading, AnAbsentContainerIsLoggedUnderTheProceduresName) {
  rows_.FillDivHeader("nowhere", "itabencloser", "T");
  rows_.FillEmptyDivHeader("nowhere", "T");
  rows_.FillDivStatus("nowhere", "T");
  rows_.AddImageTab("nowhere", "T");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::FillDivHeader", 91, kNotSet),
                                        Entry("Kitbay::FillEmptyDivHeader", 91, kNotSet),
                                        Entry("Kitbay::FillDivStatus", 91, kNotSet),
                                        Entry("Kitbay::AddImageTab", 91, kNotSet)));
}

TEST_F(ListHeading, AddImageTabWritesTheBarIntoAnEmptyHolder) {
  rows_.AddImageTab("imgtab", "<span id='bar'><img id='trans' src='utrans.gif'></span>");
  ASSERT_EQ(At("imgtab")->ChildNodeCount(), 1);
  EXPECT_EQ(At("trans")->ParentElement()->Id(), "bar");
}

TEST_F(ListHeading, AddImageTabLeavesContentUntouched) {
  At("imgtab")->SetInnerHtml("<i>kept</i>");
  rows_.AddImageTab("imgtab", "<span id='bar'></span>");
  EXPECT_EQ(At("imgtab")->InnerHtml(), "<i>kept</i>");
  EXPECT_EQ(At("bar"), nullptr);
}

TEST_F(ListHeading, AddImageTabCountsWhiteSpaceAsContent) {
  At("imgtab")->SetInnerHtml(" ");
  rows_.AddImageTab("imgtab", "<span id='bar'></span>");
  EXPECT_EQ(At("imgtab")->InnerHtml(), " ");
}

TEST_F(ListHeading, AddImageTabNeverInsertsTwice) {
  rows_.AddImageTab("imgtab", "<span id='first'></span>");
  rows_.AddImageTab("imgtab", "<span id='second'></span>");
  EXPECT_NE(At("first"), nullptr);
  EXPECT_EQ(At("second"), nullptr);
}

}  // namespace
}  // namespace kitbay::view
