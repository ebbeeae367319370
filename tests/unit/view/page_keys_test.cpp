// The page by keyboard: Tab order, the arrows, Enter and Space, and where the focus stays.
#include "page_fixture.h"
#include "recording_commands.h"
#include "two_bars_page.h"
#include "view/page_events.h"
#include "view/page_place.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kEnter = 13;
constexpr int kSpace = 32;
constexpr int kEnd = 35;
constexpr int kHome = 36;
constexpr int kLeft = 37;
constexpr int kUp = 38;
constexpr int kRight = 39;
constexpr int kDown = 40;

class PageKeysTest : public PageTest {
 protected:
  PageKeysTest() {
    Show(
        "<div id='category'><div></div><input type='button' id='installed'><div></div>"
        "<input type='button' id='update'></div><div id='imgtab'></div>"
        "<div id='installedaddons'></div><div id='installedtransports'></div>"
        "<div id='installedchannels'></div><div id='updatedaddons'></div>"
        "<div id='updatedtransports'></div><div id='updatedchannels'></div>");
    document_->SetEvents(&events_);
    rows_.AddImageTab(kInstalledBarHolder, kInstalledBarMarkup);
    FillAddons();
  }

  void FillAddons() {
    rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
    for (const auto& [name, row] :
         {std::pair("Notes", 1), std::pair("Polls", 2), std::pair("Chess", 3)}) {
      rows_.fillDiv("installedaddons", name, "1", "Text.", static_cast<std::int16_t>(row), false);
    }
  }

  /// The focused element, as its id and that of its parent.
  std::string Focused() const {
    const auto active = document_->ActiveElement();
    const auto parent = active->ParentElement();
    return (parent ? parent->Id() + "/" : "") + active->Id();
  }

  void FocusRow(int number) { At("installedaddons")->Child(number)->Focus(); }
  bool Press(int key) { return document_->Press({.code = key}); }

  RecordingCommands commands_;
  PageEvents events_{log_, page_, state_, tabs_, categories_, buttons_, commands_};
};

TEST_F(PageKeysTest, TabGoesThroughCategoriesTabsTheFirstRowAndTheButtonsOfAnOpenRow) {
  std::vector<std::string> way;
  while (document_->PressTab()) {
    way.push_back(Focused());
  }
  EXPECT_THAT(way, ElementsAre("category/installed", "category/update", "itabencloser/channels",
                               "itabencloser/trans", "itabencloser/addons", "installedaddons/1"));
  FocusRow(1);
  Press(kEnter);
  ASSERT_TRUE(document_->PressTab());
  EXPECT_EQ(document_->ActiveElement()->Value(), "Remove");
  document_->PressTab(true);
  EXPECT_EQ(Focused(), "installedaddons/1");
}

TEST_F(PageKeysTest, ArrowsHomeAndEndMoveBetweenRowsAndStopAtBothEnds) {
  FocusRow(1);
  for (const auto& [key, row] :
       {std::pair(kDown, 2), std::pair(kDown, 3), std::pair(kDown, 3), std::pair(kUp, 2),
        std::pair(kHome, 1), std::pair(kUp, 1), std::pair(kEnd, 3)}) {
    EXPECT_FALSE(Press(key)) << "the page must not scroll as well";
    EXPECT_EQ(Focused(), "installedaddons/" + std::to_string(row)) << key;
  }
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageKeysTest, TabComesBackToTheRowThatTheArrowsHaveLeft) {
  FocusRow(1);
  Press(kDown);
  EXPECT_EQ(At("installedaddons")->Child(1)->Property("tabIndex"), "-1");
  EXPECT_EQ(At("installedaddons")->Child(2)->Property("tabIndex"), "0");
  document_->PressTab(true);
  document_->PressTab();
  EXPECT_EQ(Focused(), "installedaddons/2");
}

TEST_F(PageKeysTest, EnterAndSpaceOpenTheRowAsAClickDoes) {
  for (const int key : {kEnter, kSpace}) {
    FocusRow(key == kEnter ? 1 : 2);
    EXPECT_FALSE(Press(key));
    EXPECT_EQ(At("installedaddons")->Child(key == kEnter ? 1 : 2)->Style("background"), "navy");
  }
  EXPECT_EQ(At("installedaddons")->Child(1)->Style("background"), "white");
}

TEST_F(PageKeysTest, ArrowsMoveBetweenTheTabsThatAreShown) {
  At("itabencloser")->Child(1)->SetStyle("display", "none");
  At("itabencloser")->Child(0)->Focus();
  EXPECT_FALSE(Press(kRight));
  EXPECT_EQ(Focused(), "itabencloser/addons");
  EXPECT_FALSE(Press(kLeft));
  EXPECT_EQ(Focused(), "itabencloser/channels");
}

TEST_F(PageKeysTest, EnterOnATabShowsItsList) {
  state_.installed_lists_current = true;
  At("itabencloser")->Child(2)->Focus();
  EXPECT_FALSE(Press(kEnter));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  EXPECT_EQ(At("itabencloser")->Child(0)->Property("ariaSelected"), "false");
  EXPECT_EQ(At("itabencloser")->Child(2)->Property("ariaSelected"), "true");
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
}

TEST_F(PageKeysTest, ATabHasATextAndSaysWhetherItIsSelected) {
  const auto bar = At("itabencloser");
  EXPECT_EQ(bar->Property("role"), "tablist");
  std::vector<std::string> texts;
  for (const auto& tab : bar->Children()) {
    EXPECT_EQ(tab->Property("role"), "tab");
    texts.push_back(tab->Property("alt") + " " + tab->Property("ariaSelected"));
  }
  EXPECT_THAT(texts, ElementsAre("Channels true", "Messaging services false", "Addons false"));
}

TEST_F(PageKeysTest, EnterOnAButtonIsTheEnginesOwn) {
  FocusRow(2);
  Press(kEnter);
  document_->PressTab();
  EXPECT_TRUE(Press(kEnter));
  EXPECT_THAT(commands_.calls, ElementsAre("Remove addon Polls"));
}

TEST_F(PageKeysTest, OtherKeysAndThoseWithControlAreLeftToThePage) {
  FocusRow(1);
  EXPECT_TRUE(Press('A'));
  EXPECT_TRUE(document_->Press({.code = kDown, .control = true}));
  EXPECT_EQ(Focused(), "installedaddons/1");
}

TEST_F(PageKeysTest, AButtonThatIsSwitchedOffLeavesTheFocusToItsRow) {
  FocusRow(2);
  Press(kEnter);
  document_->PressTab();
  buttons_.DisableOtherUpdatedDownload();
  EXPECT_EQ(Focused(), "installedaddons/2");
}

TEST_F(PageKeysTest, TheNextRowTakesTheFocusOfARowThatIsRemoved) {
  FocusRow(2);
  state_.current_row_id = "2";
  rows_.RemoveNode("installedaddons");
  EXPECT_EQ(Focused(), "installedaddons/3");
  state_.current_row_id = "3";
  rows_.RemoveNode("installedaddons");
  EXPECT_EQ(Focused(), "installedaddons/1");
}

TEST_F(PageKeysTest, AListThatGetsEmptyLeavesTheFocusToItsTab) {
  tabs_.showImage("addons", At("itabencloser"));
  for (const char* row : {"1", "2", "3"}) {
    FocusRow(1);
    state_.current_row_id = row;
    rows_.RemoveNode("installedaddons");
  }
  EXPECT_EQ(Focused(), "itabencloser/addons");

  FillAddons();
  FocusRow(1);
  PagePlace place(log_, page_, state_);
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  place.Restore();
  EXPECT_EQ(Focused(), "itabencloser/addons");
}

TEST_F(PageKeysTest, TheFocusAndThePlaceScrolledToOutliveARelisting) {
  FocusRow(2);
  At("installedaddons")->SetScrollTop(57);
  PagePlace place(log_, page_, state_);
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  rows_.fillDiv("installedaddons", "New", "1", "Text.", 1, false);
  rows_.fillDiv("installedaddons", "Notes", "1", "Text.", 2, false);
  rows_.fillDiv("installedaddons", "Polls", "1", "Text.", 3, false);
  EXPECT_EQ(At("installedaddons")->ScrollTop(), 0);
  place.Restore();
  EXPECT_EQ(Focused(), "installedaddons/3");
  EXPECT_EQ(At("installedaddons")->Child(3)->Property("tabIndex"), "0");
  EXPECT_EQ(At("installedaddons")->Child(1)->Property("tabIndex"), "-1");
  EXPECT_EQ(At("installedaddons")->ScrollTop(), 57);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageKeysTest, ARowOfAComponentThatIsGoneLeavesTheFocusToTheOneInItsPlace) {
  FocusRow(3);
  PagePlace place(log_, page_, state_);
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  rows_.fillDiv("installedaddons", "Notes", "1", "Text.", 1, false);
  place.Restore();
  EXPECT_EQ(Focused(), "installedaddons/1");
}

TEST_F(PageKeysTest, AListThatWasFittedFollowsTheWindow) {
  document_->Resize(300);
  EXPECT_EQ(At("installedaddons")->Style("height"), "267px");
  EXPECT_EQ(At("installedchannels")->Style("height"), "");
  document_->Resize(0);
  EXPECT_EQ(At("installedaddons")->Style("height"), "0px");
  document_->Resize(500);
  EXPECT_EQ(At("installedaddons")->Style("height"), "467px");
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::view
