// The parts of a row, starting from the row and from its buttons.
#include "view/row_nodes.h"

#include "base/failure.h"
#include "contract/page/same_element.h"
#include "page_fixture.h"

namespace kitbay::view {
namespace {

class RowNodes : public PageTest {
 protected:
  RowNodes() {
    Show("<span id='bar'></span><div id='list'></div>");
    rows_.FillDivHeader("list", "bar", "Heading");
    rows_.fillDivWithUpdates("list", "My <b>Notes</b>", "1.0", "Keeps notes.", 7, false, false);
  }

  platform::HtmlNodeRef Heading() const { return At("list")->Child(0); }
  platform::HtmlNodeRef Row() const { return At("list")->Child(1); }
};

TEST_F(RowNodes, StandWhereTheRowWasBuilt) {
  EXPECT_EQ(NameLineOf(Row())->Id(), "7");
  EXPECT_EQ(NameOf(Row())->InnerText(), "My Notes");
  EXPECT_EQ(VersionOf(Row())->InnerText(), "Version 1.0");
  EXPECT_EQ(PanelOf(Row())->Id(), "div7");
  EXPECT_EQ(ButtonCellOf(Row())->Child(1)->Id(), "btnchange");
}

TEST_F(RowNodes, OfAHeadingOrNothingAreEmpty) {
  for (const platform::HtmlNodeRef& row : {Heading()->Child(0), platform::HtmlNodeRef()}) {
    EXPECT_FALSE(NameLineOf(row));
    EXPECT_FALSE(NameOf(row));
    EXPECT_FALSE(VersionOf(row));
    EXPECT_FALSE(PanelOf(row));
    EXPECT_FALSE(ButtonCellOf(row));
  }
  EXPECT_FALSE(ButtonCellOf(Heading()));
  EXPECT_FALSE(IsRow(Heading()));
  EXPECT_TRUE(IsRow(Row()));
}

TEST_F(RowNodes, LeadFromAButtonToItsRow) {
  for (int button = 0; button < 2; ++button) {
    EXPECT_EQ(PanelOfButton(Button("list", 1, button))->Id(), "div7");
    EXPECT_TRUE(contract::AreSame(*RowOfButton(Button("list", 1, button)), *Row()));
  }
  EXPECT_FALSE(RowOfButton(document_->CreateElement("<input>")));
  EXPECT_FALSE(RowOfButton(nullptr));
}

TEST_F(RowNodes, GiveTheNameAsItIsWritten) {
  EXPECT_EQ(NameMarkup(Row()), "My <b>Notes</b>");
  EXPECT_EQ(NameMarkup(nullptr), "");
}

}  // namespace
}  // namespace kitbay::view
