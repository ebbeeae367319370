// What the buttons of the rows start.
#include "page_fixture.h"
#include "recording_commands.h"
#include "two_bars_page.h"
#include "view/page_events.h"
#include "view/row_nodes.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Records the buttons' state at the time of an installation.
class NotingCommands : public RecordingCommands {
 public:
  explicit NotingCommands(const ViewState& state) : state_(state) {}

  bool InstallNewAddons(const Click& click) override {
    RecordingCommands::InstallNewAddons(click);
    calls.push_back(state_.download_in_progress ? "buttons off" : "buttons on");
    calls.push_back("row " + state_.current_row_id);
    return is_sent;
  }

 private:
  const ViewState& state_;
};

class ButtonClicks : public PageTest {
 protected:
  ButtonClicks() {
    Show(kTwoBarsPage);
    document_->SetEvents(&events_);
  }

  /// Clicks an enabled button that is alone in the only row of an installed list.
  void ClickInstalled(const std::string& container, const std::string& value) {
    rows_.FillDivHeader(container, "itabencloser", "Heading");
    rows_.fillDiv(container, "Notes", "1", "", 1, false);
    Button(container, 1)
        ->ParentElement()
        ->SetInnerHtml("<input type='button' value='" + value + "'>");
    EXPECT_TRUE(document_->Click(Button(container, 1)));
  }

  NotingCommands commands_{state_};
  PageEvents events_{log_, page_, state_, tabs_, categories_, buttons_, commands_};
};

TEST_F(ButtonClicks, UpdateOfAnInstalledRowUpdatesItsKind) {
  ClickInstalled("installedaddons", "Update");
  ClickInstalled("installedtransports", "Update");
  ClickInstalled("installedchannels", "Update");
  EXPECT_THAT(commands_.calls,
              ElementsAre("Update addon Notes", "Update transport Notes", "Update channel Notes"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ButtonClicks, RemoveOfAnAddonUninstallsIt) {
  ClickInstalled("installedaddons", "Remove");
  EXPECT_THAT(commands_.calls, ElementsAre("Remove addon Notes"));
}

TEST_F(ButtonClicks, RemoveOfATransportUninstallsIt) {
  ClickInstalled("installedtransports", "Remove");
  EXPECT_THAT(commands_.calls, ElementsAre("Remove transport Notes"));
}

TEST_F(ButtonClicks, RemoveOfAChannelUninstallsIt) {
  ClickInstalled("installedchannels", "Remove");
  EXPECT_THAT(commands_.calls, ElementsAre("Remove channel Notes"));
}

TEST_F(ButtonClicks, TheLetterCaseOfUpdateDoesNotCount) {
  ClickInstalled("installedaddons", "UPDATE");
  ClickInstalled("installedchannels", "uPDATe");
  EXPECT_THAT(commands_.calls, ElementsAre("Update addon Notes", "Update channel Notes"));
}

TEST_F(ButtonClicks, EveryOtherValueOfAnInstalledRowRemoves) {
  for (const char* value : {"Install", "Update ", "", "Updates"}) {
    ClickInstalled("installedaddons", value);
  }
  EXPECT_THAT(commands_.calls, ElementsAre("Remove addon Notes", "Remove addon Notes",
                                           "Remove addon Notes", "Remove addon Notes"));
}

TEST_F(ButtonClicks, TheTwoButtonsOfARowDifferByTheirValueOnly) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Heading");
  rows_.fillDivWithUpdates("installedaddons", "Notes", "1", "", 1, false, false);
  document_->Click(Button("installedaddons", 1, 1));
  document_->Click(Button("installedaddons", 1, 0));
  EXPECT_THAT(commands_.calls, ElementsAre("Update addon Notes", "Remove addon Notes"));
}

TEST_F(ButtonClicks, AButtonOfAnInstalledRowLeavesButtonsAndCurrentRow) {
  state_.current_row_id = "9";
  ClickInstalled("installedaddons", "Remove");
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_EQ(state_.current_row_id, "9");
  EXPECT_FALSE(Button("installedaddons", 1)->Disabled());
}

std::string KindIn(const std::string& container) {
  constexpr std::size_t kPrefix = std::string_view("updated").size();
  return container.substr(kPrefix, container.size() - kPrefix - 1);
}

class InstallClicks : public ButtonClicks, public ::testing::WithParamInterface<const char*> {
 protected:
  InstallClicks() {
    rows_.FillDivHeader(GetParam(), "tabencloser", "Heading");
    rows_.showUpdates(GetParam(), "Notes", "1.0", "", 11);
    rows_.showUpdates(GetParam(), "Polls", "2.0", "", 12);
  }
};

TEST_P(InstallClicks, InstallSwitchesTheButtonsOffAndThenInstallsTheRowsComponent) {
  document_->Click(Button(GetParam(), 2));
  EXPECT_THAT(commands_.calls, ElementsAre(std::string("Install ") + KindIn(GetParam()) + " Polls",
                                           "buttons off", "row 12"));
  EXPECT_TRUE(Button(GetParam(), 1)->Disabled());
  EXPECT_TRUE(Button(GetParam(), 2)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(InstallClicks, TheButtonsComeBackWhenNothingIsAskedFor) {
  commands_.is_sent = false;
  document_->Click(Button(GetParam(), 2));
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_FALSE(Button(GetParam(), 1)->Disabled());
  EXPECT_FALSE(Button(GetParam(), 2)->Disabled());
}

TEST_P(InstallClicks, NoSecondDownloadStartsWhileOneRuns) {
  ASSERT_TRUE(document_->Click(Button(GetParam(), 1)));
  commands_.calls.clear();
  EXPECT_FALSE(document_->Click(Button(GetParam(), 2)));
  EXPECT_FALSE(document_->Click(Button(GetParam(), 1)));
  EXPECT_THAT(commands_.calls, IsEmpty());
  EXPECT_EQ(state_.current_row_id, "11");
  EXPECT_EQ(state_.current_row_name, "Notes");
  buttons_.EnableOtherDownload();
  EXPECT_TRUE(document_->Click(Button(GetParam(), 2)));
  EXPECT_EQ(state_.current_row_id, "12");
  EXPECT_EQ(state_.current_row_name, "Polls");
}

INSTANTIATE_TEST_SUITE_P(UpdatedContainers, InstallClicks,
                         ::testing::Values("updatedaddons", "updatedtransports", "updatedchannels"),
                         [](const auto& container) { return std::string(container.param); });

class NewRow : public ButtonClicks {
 protected:
  /// Clicks the button of a new addon with that name; returns the name that is installed.
  std::string InstalledName(const std::string& name) {
    rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
    rows_.showUpdates("updatedaddons", name, "1.0", "", 1);
    commands_.calls.clear();
    document_->Click(Button("updatedaddons", 1));
    buttons_.EnableOtherDownload();
    return commands_.calls.empty() ? "(none)" : commands_.calls.front();
  }
};

TEST_F(NewRow, TheNameEndsAtTheFirstVersion) {
  EXPECT_EQ(InstalledName("Notes Version Two"), "Install addon Notes ");
  EXPECT_EQ(InstalledName("Version"), "Install addon ");
  EXPECT_EQ(InstalledName("Subversion"), "Install addon Subversion");
}

TEST_F(NewRow, TheNameIsTextAndNotMarkup) {
  EXPECT_EQ(InstalledName("<b>Notes</b> &amp; more"), "Install addon Notes & more");
}

TEST_F(NewRow, TheButtonsValueDoesNotCount) {
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  rows_.fillDivWithUpdates("updatedaddons", "Notes", "1.0", "", 1, false, false);
  document_->Click(Button("updatedaddons", 1, 1));
  EXPECT_THAT(commands_.calls, ElementsAre("Install addon Notes", "buttons off", "row 1"));
}

TEST_F(NewRow, APanelWithoutANumberIsLoggedAndTheClickIsDropped) {
  At("updatedaddons")
      ->SetInnerHtml(
          "<div><span>Notes</span><div id='x'><span><font><input type='button' id='press'></font>"
          "</span></div></div>");
  document_->Click(At("press"));
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries.front().procedure, "Kitbay::doc_onclick");
  EXPECT_THAT(commands_.calls, IsEmpty());
  EXPECT_FALSE(state_.download_in_progress);
}

TEST_F(NewRow, ANameLineWithoutAVersionIsLoggedAndNoButtonIsSwitchedOff) {
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  rows_.showUpdates("updatedaddons", "Notes", "1.0", "", 1);
  NameLineOf(At("updatedaddons")->Child(1))->SetInnerText("Notes");
  document_->Click(Button("updatedaddons", 1));
  EXPECT_THAT(log_.entries, ElementsAre(fakes::Entry("Kitbay::doc_onclick", 5,
                                                     "Invalid procedure call or argument")));
  EXPECT_THAT(commands_.calls, IsEmpty());
  EXPECT_FALSE(state_.download_in_progress);
}

class OtherClicks : public ButtonClicks {
 protected:
  /// Clicks there and expects that nothing happens.
  void ExpectNothingAt(const platform::HtmlNodeRef& node) {
    const std::string before = document_->TreeText();
    EXPECT_TRUE(document_->Click(node));
    EXPECT_EQ(document_->TreeText(), before);
    EXPECT_THAT(commands_.calls, IsEmpty());
    EXPECT_THAT(log_.entries, IsEmpty());
  }
};

TEST_F(OtherClicks, AnInputThatStandsElsewhereDoesNothing) {
  At("hint")->SetInnerHtml("<input type='button' id='press' value='Update'>");
  ExpectNothingAt(At("press"));
}

TEST_F(OtherClicks, AnInputWithinANameDoesNothing) {
  rows_.fillDiv("installedaddons", "<input type='button' id='press' value='Update'>", "1", "", 1,
                true);
  ExpectNothingAt(At("press"));
}

TEST_F(OtherClicks, AnInputDeeperThanTheButtonsDoesNothing) {
  rows_.fillDiv("installedaddons", "Notes", "1", "<b><input type='button' id='press'></b>", 1,
                true);
  ExpectNothingAt(At("press"));
}

TEST_F(OtherClicks, AnElementAtTheButtonsPlaceDoesNothing) {
  rows_.showUpdates("updatedaddons", "Notes", "1", "<b id='bold'>Keeps</b> notes.", 1);
  ExpectNothingAt(At("bold"));
}

TEST_F(OtherClicks, TheCellOfAButtonDoesNothing) {
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 1);
  ExpectNothingAt(Button("updatedaddons", 0)->ParentElement());
}

TEST_F(OtherClicks, ASpanOfAnOpenPanelKeepsItsRowOpen) {
  rows_.FillDivHeader("updatedaddons", "tabencloser", "Heading");
  rows_.showUpdates("updatedaddons", "Notes", "1", "", 1);
  document_->Click(At("updatedaddons")->Child(1)->Child(0)->Child(0));
  ExpectNothingAt(At("updatedaddons")->Child(1)->Child(1)->Child(0));
}

}  // namespace
}  // namespace kitbay::view
