// The switch between what is installed and what can be installed.
#include "page_fixture.h"
#include "recording_commands.h"
#include "two_bars_page.h"
#include "view/page_events.h"

namespace kitbay::view {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kTransportsOnly = fakes::ManifestText(
    base::ComponentKind::kTransport,
    fakes::OfferText(base::ComponentKind::kTransport, {.id = "wire", .name = "Wire"}));

class CategorySwitch : public PageTest {
 protected:
  CategorySwitch() {
    Show(kTwoBarsPage);
    document_->SetEvents(&events_);
    InstallDatastore(kSmallDatastore);
    OfferManifest(kSmallManifest);
  }

  void ClickTab(const std::string& bar, int place) { document_->Click(At(bar)->Child(place)); }

  /// What distinguishes a pressed control from a raised one.
  std::vector<std::string> Look(const std::string& control) const {
    return {At(control)->Style("border"), At(control)->Style("background"),
            At(control)->Style("fontWeight")};
  }

  /// The display style of a category's holder and of its bar.
  std::vector<std::string> BarDisplays(const std::string& holder, const std::string& bar) const {
    return {Display(holder), Display(bar)};
  }

  RecordingCommands commands_;
  PageEvents events_{log_, page_, state_, tabs_, categories_, buttons_, commands_};
};

TEST_F(CategorySwitch, TheUpdatesControlShowsTheNewComponentsAndTheirBarAlone) {
  document_->Click(At("update"));
  EXPECT_EQ(Display("imgtab"), "none");
  EXPECT_EQ(Display("itabencloser"), "none");
  EXPECT_THAT(BarDisplays("imgtab1", "tabencloser"), Each(""));
  EXPECT_THAT(Displays("installed"), Each("none"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", ""));
  EXPECT_EQ(At("updatedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(At("updatedtransports")->ChildNodeCount(), 2);
  EXPECT_EQ(At("updatedaddons")->ChildNodeCount(), 2);
  EXPECT_TRUE(state_.updates_category);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, TheInstalledControlShowsTheInstalledAndTheirBarAlone) {
  document_->Click(At("update"));
  document_->Click(At("installed"));
  EXPECT_THAT(BarDisplays("imgtab", "itabencloser"), Each(""));
  EXPECT_THAT(BarDisplays("imgtab1", "tabencloser"), Each("none"));
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", ""));
  EXPECT_THAT(Displays("updated"), Each("none"));
  EXPECT_FALSE(state_.updates_category);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, TheControlOfTheShownCategoryIsPressedAndTheOtherRaised) {
  document_->Click(At("update"));
  EXPECT_THAT(Look("update"), ElementsAre("2px inset", "Window", "bold"));
  EXPECT_THAT(Look("installed"), ElementsAre("2px outset", "", ""));
  document_->Click(At("installed"));
  EXPECT_THAT(Look("installed"), ElementsAre("2px inset", "Window", "bold"));
  EXPECT_THAT(Look("update"), ElementsAre("2px outset", "", ""));
}

TEST_F(CategorySwitch, TheKindSelectedUnderInstalledIsTheOneThatUpdatesOpensOn) {
  ClickTab("itabencloser", 1);
  document_->Click(At("update"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "", "none"));
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
}

TEST_F(CategorySwitch, TheKindSelectedUnderUpdatesIsTheOneThatInstalledOpensOn) {
  document_->Click(At("update"));
  ClickTab("tabencloser", 2);
  document_->Click(At("installed"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
}

TEST_F(CategorySwitch, EveryKindIsKeptThereAndBack) {
  const std::vector<std::vector<std::string>> displays = {
      {"none", "none", ""}, {"none", "", "none"}, {"", "none", "none"}};
  for (int tab = 0; tab < 3; ++tab) {
    ClickTab("itabencloser", tab);
    document_->Click(At("update"));
    EXPECT_EQ(Displays("updated"), displays[static_cast<std::size_t>(tab)]) << tab;
    document_->Click(At("installed"));
    EXPECT_EQ(Displays("installed"), displays[static_cast<std::size_t>(tab)]) << tab;
  }
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, WhatIsListedDuringADownloadHasItsButtonsOff) {
  state_.download_in_progress = true;
  document_->Click(At("update"));
  EXPECT_TRUE(Button("updatedaddons", 1)->Disabled());
  document_->Click(At("installed"));
  EXPECT_TRUE(Button("installedaddons", 1)->Disabled());
  EXPECT_TRUE(Button("installedchannels", 1)->Disabled());
  state_.download_in_progress = false;
  document_->Click(At("installed"));
  EXPECT_FALSE(Button("installedaddons", 1)->Disabled());
}

TEST_F(CategorySwitch, AClickOnTheDisabledUpdatesControlChangesNothing) {
  At("update")->SetDisabled(true);
  const std::string before = document_->TreeText();
  EXPECT_FALSE(document_->Click(At("update")));
  categories_.ShowUpdatedCategory();
  EXPECT_EQ(document_->TreeText(), before);
  EXPECT_FALSE(state_.updates_category);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, TheUpdatesControlIsTheThirdChildNodeWhateverItsId) {
  At("category")->ChildNode(1)->SetDisabled(true);
  categories_.ShowUpdatedCategory();
  EXPECT_TRUE(state_.updates_category);
}

TEST_F(CategorySwitch, WithNothingOnOfferOnlyTheTextIsShown) {
  sources_.UpdateSources.clear();
  document_->Click(At("update"));
  EXPECT_EQ(At("updatedaddons")->InnerText(), "No additional modules are available right now.");
  EXPECT_EQ(
      fakes::FakeHtmlDocument::TreeText(At("updatedaddons")->Child(0)),
      fakes::FakeHtmlDocument::TreeText(
          fakes::FakeHtmlDocument("<font style='font-family:verdana; font-size:11; '>No additional "
                                  "modules are available right now.</font>")
              .Body()
              ->Child(0)));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "none", "none"));
  EXPECT_THAT(Displays("installed"), Each("none"));
  EXPECT_THAT(BarDisplays("imgtab", "itabencloser"), Each("none"));
  EXPECT_THAT(BarDisplays("imgtab1", "tabencloser"), Each("none"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, WithNothingOnOfferTheTextIsShownWhicheverKindIsSelected) {
  sources_.UpdateSources.clear();
  for (int tab = 0; tab < 3; ++tab) {
    ClickTab("itabencloser", tab);
    document_->Click(At("update"));
    EXPECT_THAT(Displays("updated"), ElementsAre("", "none", "none")) << tab;
    document_->Click(At("installed"));
  }
}

TEST_F(CategorySwitch, WhenSomethingIsOnOfferAgainTheBarComesBack) {
  const std::vector<std::string> offered = sources_.UpdateSources;
  sources_.UpdateSources.clear();
  document_->Click(At("update"));
  document_->Click(At("installed"));
  sources_.UpdateSources = offered;
  document_->Click(At("update"));
  EXPECT_THAT(BarDisplays("imgtab1", "tabencloser"), Each(""));
  EXPECT_EQ(At("updatedaddons")->ChildNodeCount(), 2);
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", ""));
}

TEST_F(CategorySwitch, OneKindOnOfferIsEnoughForTheBar) {
  OfferManifest(kTransportsOnly);
  document_->Click(At("update"));
  EXPECT_THAT(BarDisplays("imgtab1", "tabencloser"), Each(""));
  EXPECT_EQ(At("tabencloser")->Child(0)->Style("display"), "none");
  EXPECT_EQ(At("tabencloser")->Child(1)->Style("display"), "");
  EXPECT_EQ(At("tabencloser")->Child(2)->Style("display"), "none");
}

TEST_F(CategorySwitch, AClickOnTheControlThatIsPressedKeepsTheSelectedKind) {
  document_->Click(At("update"));
  ClickTab("tabencloser", 1);
  document_->Click(At("update"));
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "", "none"));
  document_->Click(At("installed"));
  ClickTab("itabencloser", 2);
  document_->Click(At("installed"));
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "utrans.gif", "iaddons.gif"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

// The container of a kind with nothing to offer says so; its tab is hidden.
TEST_F(CategorySwitch, TheSelectedKindIsKeptAlsoWhenItHasNothingOnOffer) {
  OfferManifest(kTransportsOnly);
  document_->Click(At("update"));
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "none", ""));
  EXPECT_EQ(At("updatedchannels")->InnerText(), "No additional Channels available right now");
  document_->Click(At("installed"));
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", ""));
}

TEST_F(CategorySwitch, BeforeAnyAnswerTheInstalledControlLeavesWhatIsShown) {
  At("imgtab1")->SetInnerHtml("");
  for (const char* list : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
    At(list)->SetStyle("display", "none");
  }
  tabs_.ShowAddons("installedaddons", "installedchannels", "installedtransports");
  document_->Click(At("installed"));
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  EXPECT_THAT(BarDisplays("imgtab", "itabencloser"), Each(""));
  EXPECT_EQ(At("installed")->Style("border"), "2px inset");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategorySwitch, showInstalledSetsItsElementsInOrder) {
  const std::vector<std::string> order = {"imgtab",         "imgtab1",       "tabencloser",
                                          "itabencloser",   "updatedaddons", "updatedtransports",
                                          "updatedchannels"};
  const std::vector<std::string> wanted = {"", "none", "none", "", "none", "none", "none"};
  // Without a datastore no list is written; three styles of each of the two controls are set first.
  files_ = fakes::MemoryFiles();
  constexpr int kControls = 6;
  for (std::size_t failing = 0; failing < order.size(); ++failing) {
    for (const std::string& id : order) {
      At(id)->SetStyle("display", "block");
    }
    log_.entries.clear();
    document_->FailMember("SetStyle", base::Failure(-2147467259, "Unspecified error"),
                          kControls + static_cast<int>(failing) + 1);
    categories_.ShowInstalledCategory();
    document_->FailNothing();
    for (std::size_t i = 0; i < order.size(); ++i) {
      EXPECT_EQ(Display(order[i]), i < failing ? wanted[i] : "block") << failing << order[i];
    }
    ASSERT_FALSE(log_.entries.empty());
    EXPECT_EQ(log_.entries.back(),
              Entry("Kitbay::showInstalled", -2147467259, "Unspecified error"));
  }
}

TEST_F(CategorySwitch, showUpdateLogsWithATrailingBlankAndKeepsWhatIsHidden) {
  At("installedchannels")->RemoveNode(true);
  document_->Click(At("update"));
  EXPECT_EQ(Display("imgtab"), "none");
  EXPECT_EQ(Display("itabencloser"), "none");
  EXPECT_EQ(Display("installedaddons"), "none");
  EXPECT_EQ(Display("installedtransports"), "");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::showUpdate ", 91, kNotSet)));
}

TEST_F(CategorySwitch, ACategorySwitchThatIsMissingIsLogged) {
  At("category")->RemoveNode(true);
  categories_.ShowUpdatedCategory();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowUpdatedCategory", 91, kNotSet)));
}

TEST_F(CategorySwitch, AMissingControlIsLoggedByTheInstalledCategory) {
  At("update")->RemoveNode(true);
  categories_.ShowInstalledCategory();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ShowInstalledCategory", 91, kNotSet)));
}

}  // namespace
}  // namespace kitbay::view
