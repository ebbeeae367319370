// The rows as the browser holds them.
#include "page_fixture.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RowTree : public PageTest {
 protected:
  RowTree() { Show("<div id='installedaddons'></div><div id='updatedaddons'></div>"); }

  /// The cell with the description in a row's panel, and the one with the buttons.
  static platform::HtmlNodeRef TextCell(const platform::HtmlNodeRef& row) {
    return row->ChildNode(1)->ChildNode(0)->ChildNode(0);
  }
  static platform::HtmlNodeRef ButtonCell(const platform::HtmlNodeRef& row) {
    return row->ChildNode(1)->ChildNode(0)->ChildNode(1);
  }
};

TEST_F(RowTree, ARowIsANameLineAndAHiddenPanel) {
  rows_.fillDiv("installedaddons", "Notes", "1.2.0.5", "Keeps notes.", 7, false);
  const auto row = At("installedaddons")->ChildNode(0);
  EXPECT_EQ(row->TagName(), "DIV");
  EXPECT_EQ(row->Id(), "7");
  EXPECT_EQ(row->Style("paddingBottom"), "5pt");
  EXPECT_EQ(row->Style("paddingTop"), "5pt");
  ASSERT_EQ(row->ChildNodeCount(), 2);

  const auto name_line = row->ChildNode(0);
  EXPECT_EQ(name_line->TagName(), "SPAN");
  EXPECT_EQ(name_line->Id(), "7");
  ASSERT_EQ(name_line->ChildNodeCount(), 2);
  EXPECT_EQ(name_line->ChildNode(0)->InnerHtml(), "Notes");
  EXPECT_EQ(name_line->ChildNode(1)->InnerHtml(), "Version 1.2.0.5");

  const auto panel = row->ChildNode(1);
  EXPECT_EQ(panel->TagName(), "DIV");
  EXPECT_EQ(panel->Id(), "div7");
  EXPECT_EQ(panel->Style("display"), "none");
  ASSERT_EQ(panel->ChildNodeCount(), 1);
  EXPECT_EQ(panel->ChildNode(0)->TagName(), "SPAN");
  ASSERT_EQ(panel->ChildNode(0)->ChildNodeCount(), 2);
  EXPECT_EQ(TextCell(row)->InnerHtml(), "Keeps notes.&nbsp;&nbsp;&nbsp;");
  ASSERT_EQ(ButtonCell(row)->ChildNodeCount(), 1);
  EXPECT_EQ(ButtonCell(row)->ChildNode(0)->Id(), "btninstalled");
  EXPECT_EQ(ButtonCell(row)->ChildNode(0)->Value(), "Remove");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RowTree, RowsWithUpdateStatusHaveTheSameShape) {
  rows_.fillDivWithUpdates("installedaddons", "Notes", "1", "Keeps notes.", 2, false, false);
  const auto row = At("installedaddons")->ChildNode(0);
  ASSERT_EQ(row->ChildNodeCount(), 2);
  EXPECT_EQ(row->ChildNode(0)->Id(), "2");
  EXPECT_EQ(row->ChildNode(1)->Id(), "div2");
  EXPECT_EQ(row->ChildNode(1)->Style("display"), "none");
  ASSERT_EQ(row->ChildNode(1)->ChildNodeCount(), 1);
  EXPECT_EQ(TextCell(row)->InnerHtml(), "Keeps notes.&nbsp;&nbsp;&nbsp;");
  const auto cell = ButtonCell(row);
  ASSERT_EQ(cell->ChildCount(), 2);
  EXPECT_EQ(cell->Child(0)->Id(), "btninstalled");
  EXPECT_EQ(cell->Child(0)->Value(), "Remove");
  EXPECT_EQ(cell->Child(1)->Id(), "btnchange");
  EXPECT_EQ(cell->Child(1)->Value(), "Update");
}

TEST_F(RowTree, NewComponentsHaveTheSameShapeAndAnInstallButton) {
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 3);
  const auto row = At("updatedaddons")->ChildNode(0);
  ASSERT_EQ(row->ChildNodeCount(), 2);
  EXPECT_EQ(row->ChildNode(1)->Id(), "div3");
  ASSERT_EQ(ButtonCell(row)->ChildNodeCount(), 1);
  EXPECT_EQ(ButtonCell(row)->ChildNode(0)->Value(), "Install");
  EXPECT_FALSE(ButtonCell(row)->ChildNode(0)->Disabled());
}

TEST_F(RowTree, AnEmptyDescriptionGivesThreeNonBreakingSpaces) {
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  EXPECT_EQ(TextCell(At("installedaddons")->ChildNode(0))->InnerHtml(), "&nbsp;&nbsp;&nbsp;");
}

TEST_F(RowTree, ALessThanSignInANameOrDescriptionBeginsMarkup) {
  rows_.fillDiv("installedaddons", "<b id='inname'>Notes</b>", "1", "a <i id='intext'>b</i> < c", 1,
                false);
  EXPECT_EQ(At("inname")->TagName(), "B");
  EXPECT_EQ(At("inname")->ParentElement()->ParentElement()->Id(), "1");
  EXPECT_EQ(At("intext")->TagName(), "I");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RowTree, ACoreComponentHasAnEmptyButtonCell) {
  rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", 1, true);
  EXPECT_EQ(ButtonCell(At("installedaddons")->ChildNode(0))->ChildNodeCount(), 0);
}

TEST_F(RowTree, WhileDownloadingRemoveStaysOnAndTheUpdateBesideItIsOff) {
  state_.download_in_progress = true;
  rows_.fillDivWithUpdates("installedaddons", "Notes", "1", "", 1, false, false);
  const auto cell = ButtonCell(At("installedaddons")->ChildNode(0));
  EXPECT_FALSE(cell->Child(0)->Disabled());
  EXPECT_TRUE(cell->Child(1)->Disabled());
}

TEST_F(RowTree, WhileDownloadingInstallAndUpdateAreOff) {
  state_.download_in_progress = true;
  rows_.fillDivWithUpdates("updatedaddons", "New", "1", "", 1, false, true);
  rows_.fillDivWithUpdates("updatedaddons", "Newer", "2", "", 2, true, false);
  const auto list = At("updatedaddons");
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(ButtonCell(list->ChildNode(i))->ChildNodeCount(), 1);
    EXPECT_TRUE(ButtonCell(list->ChildNode(i))->ChildNode(0)->Disabled());
  }
}

TEST_F(RowTree, RowsAreAppendedInTheOrderOfTheCalls) {
  for (const std::int16_t row : {3, 1, 2}) {
    rows_.fillDiv("installedaddons", "Notes", "1", "", row, false);
  }
  const auto list = At("installedaddons");
  std::vector<std::string> ids;
  for (int i = 0; i < list->ChildNodeCount(); ++i) {
    ids.push_back(list->ChildNode(i)->Id());
  }
  EXPECT_THAT(ids, ElementsAre("3", "1", "2"));
}

TEST_F(RowTree, AnAbsentContainerIsLoggedOnceUnderTheBuildersName) {
  const std::string before = document_->TreeText();
  rows_.fillDiv("nowhere", "Notes", "1", "", 1, false);
  rows_.fillDivWithUpdates("nowhere", "Notes", "1", "", 1, false, false);
  rows_.showUpdates("nowhere", "Notes", "1", "", 1);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::fillDiv", 91, kNotSet),
                                        Entry("Kitbay::fillDivWithUpdates", 91, kNotSet),
                                        Entry("Kitbay::showUpdates", 91, kNotSet)));
  EXPECT_EQ(document_->TreeText(), before);
}

TEST_F(RowTree, ARowWhosePanelFailsEndsThereAndTheNextRowIsBuilt) {
  document_->FailMember("InsertAdjacentHtml", base::Failure(-2147467259, "Unspecified error"), 2);
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  EXPECT_EQ(At("installedaddons")->ChildNodeCount(), 0);
  rows_.fillDiv("installedaddons", "Polls", "1", "", 2, false);
  ASSERT_EQ(At("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(At("installedaddons")->ChildNode(0)->Id(), "2");
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::fillDiv", -2147467259, "Unspecified error")));
}

TEST_F(RowTree, WithoutAPageARowIsLogged) {
  page_.Drop();
  rows_.fillDiv("installedaddons", "Notes", "1", "", 1, false);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::fillDiv", 91, kNotSet)));
}

}  // namespace
}  // namespace kitbay::view
