// What clicks and drags on the page do.
#include "view/page_events.h"

#include "base/text.h"
#include "page_fixture.h"
#include "recording_commands.h"
#include "two_bars_page.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageEventsTest : public PageTest {
 protected:
  PageEventsTest() { ShowListening(kTwoBarsPage); }

  void ShowListening(const std::string& markup) {
    Show(markup);
    document_->SetEvents(&events_);
  }

  void AddRows(const std::string& container) {
    rows_.FillDivHeader(container, "itabencloser", "Heading");
    rows_.fillDiv(container, "<b>Notes</b> pad", "1", "Keeps notes.", 1, false);
    rows_.fillDiv(container, "Polls", "1", "Asks.", 2, false);
  }

  /// Clicks there and expects that nothing happens.
  void ExpectNothingAt(const platform::HtmlNodeRef& node) {
    const std::string before = document_->TreeText();
    EXPECT_TRUE(document_->Click(node));
    EXPECT_EQ(document_->TreeText(), before);
    EXPECT_THAT(log_.entries, IsEmpty());
  }

  /// The display styles of the two rows' panels.
  std::vector<std::string> Panels(const std::string& container) const {
    return {At(container)->Child(1)->Child(1)->Style("display"),
            At(container)->Child(2)->Child(1)->Style("display")};
  }

  RecordingCommands commands_;
  PageEvents events_{log_, page_, state_, tabs_, categories_, buttons_, commands_};
};

TEST_F(PageEventsTest, ATabOfTheInstalledBarSwitchesTheKind) {
  InstallDatastore(kSmallDatastore);
  document_->Click(At("itabencloser")->Child(1));
  EXPECT_EQ(base::AfterLastSlash(At("itabencloser")->Child(1)->Src()), "itrans.gif");
  EXPECT_EQ(Display("installedtransports"), "");
  EXPECT_EQ(Display("installedaddons"), "none");
  EXPECT_EQ(Display("installedchannels"), "none");
  EXPECT_EQ(At("installedtransports")->ChildNodeCount(), 2);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageEventsTest, TheSameImageInTheUpdatesBarSwitchesTheUpdatedKind) {
  InstallDatastore(kSmallDatastore);
  document_->Click(At("tabencloser")->Child(1));
  EXPECT_EQ(base::AfterLastSlash(At("tabencloser")->Child(1)->Src()), "itrans.gif");
  EXPECT_EQ(base::AfterLastSlash(At("itabencloser")->Child(1)->Src()), "utrans.gif");
  EXPECT_EQ(Display("updatedtransports"), "");
  EXPECT_EQ(Display("updatedaddons"), "none");
  EXPECT_EQ(Display("updatedchannels"), "none");
  EXPECT_EQ(Display("installedtransports"), "none");
  EXPECT_EQ(At("installedtransports")->InnerHtml(), "");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageEventsTest, AnImageOfThatIdElsewhereDoesNothing) {
  At("hint")->SetInnerHtml("<img id='trans'>");
  ExpectNothingAt(At("hint")->Child(0));
}

class RowClicks : public PageEventsTest, public ::testing::WithParamInterface<const char*> {
 protected:
  RowClicks() {
    AddRows("installedaddons");
    AddRows("installedtransports");
    AddRows("installedchannels");
    AddRows("updatedaddons");
    AddRows("updatedtransports");
    AddRows("updatedchannels");
  }

  static std::vector<std::string> AllContainers() {
    return {"installedaddons", "installedtransports", "installedchannels",
            "updatedaddons",   "updatedtransports",   "updatedchannels"};
  }
};

TEST_P(RowClicks, ANameOpensItsRowAndClosesTheOthersOfItsContainerOnly) {
  for (const std::string& container : AllContainers()) {
    document_->Click(At(container)->Child(1)->ChildNode(0)->ChildNode(0));
  }
  document_->Click(At(GetParam())->Child(2)->ChildNode(0)->ChildNode(0));
  for (const std::string& container : AllContainers()) {
    if (container == GetParam()) {
      EXPECT_THAT(Panels(container), ElementsAre("none", "")) << container;
    } else {
      EXPECT_THAT(Panels(container), ElementsAre("", "none")) << container;
    }
  }
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(RowClicks, AVersionOpensItsRow) {
  document_->Click(At(GetParam())->Child(2)->ChildNode(0)->ChildNode(1));
  EXPECT_THAT(Panels(GetParam()), ElementsAre("none", ""));
}

TEST_P(RowClicks, AHeadingDoesNothing) {
  ExpectNothingAt(At(GetParam())->Child(0));
  ExpectNothingAt(At(GetParam())->Child(0)->Child(0));
}

INSTANTIATE_TEST_SUITE_P(AllContainers, RowClicks,
                         ::testing::Values("installedaddons", "installedtransports",
                                           "installedchannels", "updatedaddons",
                                           "updatedtransports", "updatedchannels"),
                         [](const auto& container) { return std::string(container.param); });

TEST_F(PageEventsTest, EmptySpaceDoesNothing) {
  AddRows("installedaddons");
  ExpectNothingAt(document_->Body());
  ExpectNothingAt(At("installedaddons"));
  ExpectNothingAt(At("hint"));
  ExpectNothingAt(At("itabencloser"));
}

TEST_F(PageEventsTest, ADescriptionOrARowItselfDoesNothing) {
  AddRows("installedaddons");
  const auto row = At("installedaddons")->Child(1);
  ExpectNothingAt(row);
  ExpectNothingAt(row->ChildNode(0));
  ExpectNothingAt(row->ChildNode(1));
  ExpectNothingAt(row->ChildNode(1)->ChildNode(0)->ChildNode(0));
}

TEST_F(PageEventsTest, MarkupWithinANameDoesNothing) {
  AddRows("installedaddons");
  ExpectNothingAt(At("installedaddons")->Child(1)->ChildNode(0)->ChildNode(0)->Child(0));
}

TEST_F(PageEventsTest, AContainersIdCountsInItsOwnLetterCaseOnly) {
  ShowListening(
      "<div id='InstalledAddons'><div id='1'><span id='1'><font id='name'>Notes</font></span>"
      "<div style='display:none'></div></div></div>");
  ExpectNothingAt(At("name"));
}

TEST_F(PageEventsTest, ADisabledButtonRaisesNoEvent) {
  state_.download_in_progress = true;
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 1);
  EXPECT_FALSE(document_->Click(
      At("updatedaddons")->ChildNode(0)->ChildNode(1)->Child(0)->Child(1)->Child(0)));
}

TEST_F(PageEventsTest, WithoutAnEventNothingHappens) {
  const std::string before = document_->TreeText();
  events_.doc_onclick();
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PageEventsTest, AFailureIsLoggedAndTheClickIsDropped) {
  AddRows("installedaddons");
  const auto name = At("installedaddons")->Child(1)->ChildNode(0)->ChildNode(0);
  document_->FailMember("ParentElement", base::Failure(-2147467259, "Unspecified error"), 3);
  document_->Click(name);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::doc_onclick", -2147467259, "Unspecified error")));
  EXPECT_THAT(Panels("installedaddons"), ElementsAre("none", "none"));
  document_->Click(name);
  EXPECT_THAT(Panels("installedaddons"), ElementsAre("", "none"));
}

TEST_F(PageEventsTest, WithoutAPageAClickIsLogged) {
  page_.Drop();
  events_.doc_onclick();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::doc_onclick", 91, kNotSet)));
}

TEST_F(PageEventsTest, EveryDragIsCancelled) {
  AddRows("installedaddons");
  EXPECT_FALSE(document_->StartDrag(At("itabencloser")->Child(0)));
  EXPECT_FALSE(document_->StartDrag(At("installedaddons")->Child(1)->ChildNode(0)));
  EXPECT_FALSE(document_->StartDrag(document_->Body()));
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::view
