// Opening one row of a list and closing the others.
#include "page_fixture.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OpenRow : public PageTest {
 protected:
  OpenRow() {
    Show(
        "<span id='itabencloser' style='height:33px'></span><div id='installedaddons'></div>"
        "<div id='installedchannels'></div>");
    rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
    for (const std::int16_t row : {1, 2, 3}) {
      rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", row, false);
      rows_.fillDiv("installedchannels", "News", "1", "Tells news.", row, false);
    }
  }

  /// A row's four styles: background, colour, name font weight, panel display.
  static std::vector<std::string> Styles(const platform::HtmlNodeRef& row) {
    return {row->Style("background"), row->Style("color"),
            row->ChildNode(0)->ChildNode(0)->Style("fontWeight"), row->Child(1)->Style("display")};
  }

  /// The row with that number among the addons, whose heading is child 0.
  platform::HtmlNodeRef Addon(int number) const { return At("installedaddons")->Child(number); }

  void ClickAddon(int number) { tabs_.HideOthers(Addon(number)->ChildNode(0)); }
};

TEST_F(OpenRow, TheClickedRowIsWhiteOnNavyInBoldAndOpen) {
  ClickAddon(2);
  EXPECT_THAT(Styles(Addon(2)), ElementsAre("navy", "white", "800", ""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(OpenRow, EveryOtherRowIsBlackOnWhiteAndClosed) {
  ClickAddon(2);
  EXPECT_THAT(Styles(Addon(1)), ElementsAre("white", "black", "", "none"));
  EXPECT_THAT(Styles(Addon(3)), ElementsAre("white", "black", "", "none"));
}

TEST_F(OpenRow, AnotherClickClosesTheRowThatWasOpen) {
  ClickAddon(2);
  ClickAddon(3);
  EXPECT_THAT(Styles(Addon(2)), ElementsAre("white", "black", "", "none"));
  EXPECT_THAT(Styles(Addon(3)), ElementsAre("navy", "white", "800", ""));
}

TEST_F(OpenRow, AClickOnTheOpenRowLeavesItOpen) {
  ClickAddon(1);
  ClickAddon(1);
  EXPECT_THAT(Styles(Addon(1)), ElementsAre("navy", "white", "800", ""));
}

TEST_F(OpenRow, ARowSaysWhetherItIsOpen) {
  EXPECT_EQ(Addon(2)->Property("ariaExpanded"), "false");
  ClickAddon(2);
  EXPECT_EQ(Addon(2)->Property("ariaExpanded"), "true");
  ClickAddon(3);
  EXPECT_EQ(Addon(2)->Property("ariaExpanded"), "false");
  EXPECT_EQ(Addon(3)->Property("ariaExpanded"), "true");
}

TEST_F(OpenRow, TheMarkOfAnUpdateStaysWhenItsRowOpensAndCloses) {
  rows_.fillDivWithUpdates("installedaddons", "Chess", "1", "", 4, false, false);
  for (const int number : {4, 1}) {
    ClickAddon(number);
    EXPECT_EQ(Addon(4)->Property("className"), "hasupdate") << number;
  }
}

TEST_F(OpenRow, ALongListIsWalkedThroughOnce) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  for (std::int16_t row = 1; row <= 1000; ++row) {
    rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", row, false);
  }
  ClickAddon(500);
  const int before = document_->calls();
  ClickAddon(700);
  EXPECT_LT(document_->calls() - before, 60);
  EXPECT_THAT(Styles(Addon(500)), ElementsAre("white", "black", "", "none"));
}

TEST_F(OpenRow, TheHeadingIsSpared) {
  const auto heading = Addon(0);
  const std::string before = fakes::FakeHtmlDocument::Outer(heading);
  ClickAddon(1);
  EXPECT_EQ(fakes::FakeHtmlDocument::Outer(heading), before);
}

TEST_F(OpenRow, AnotherContainerIsNotTouched) {
  const std::string before = fakes::FakeHtmlDocument::Outer(At("installedchannels"));
  ClickAddon(1);
  EXPECT_EQ(fakes::FakeHtmlDocument::Outer(At("installedchannels")), before);
}

TEST_F(OpenRow, ARelistingClosesAll) {
  ClickAddon(1);
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", 1, false);
  EXPECT_THAT(Styles(Addon(1)), ElementsAre("", "", "", "none"));
}

TEST_F(OpenRow, AHalfBuiltRowIsSparedLikeAHeading) {
  Addon(1)->ChildNode(1)->RemoveNode(true);
  const std::string before = fakes::FakeHtmlDocument::Outer(Addon(1));
  ClickAddon(2);
  EXPECT_EQ(fakes::FakeHtmlDocument::Outer(Addon(1)), before);
  EXPECT_THAT(Styles(Addon(2)), ElementsAre("navy", "white", "800", ""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(OpenRow, AFailureIsLoggedAndWhatWasSetStays) {
  document_->FailMember("SetStyle", base::Failure(-2147467259, "Unspecified error"), 6);
  ClickAddon(2);
  EXPECT_THAT(Styles(Addon(1)), ElementsAre("white", "", "", "none"));
  EXPECT_THAT(Styles(Addon(2)), ElementsAre("navy", "white", "800", ""));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::HideOthers", -2147467259, "Unspecified error")));
}

TEST_F(OpenRow, NoNameLineIsLogged) {
  tabs_.HideOthers(nullptr);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::HideOthers", 91, kNotSet)));
}

}  // namespace
}  // namespace kitbay::view
