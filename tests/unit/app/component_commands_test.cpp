// From a click on the page's buttons to the flows behind them.
#include "app/component_commands.h"

#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ComponentClicks : public FakeProgram {
 protected:
  ComponentClicks() {
    StartAndLoadPage();
    page.sources.UpdateSources = {"updates.example/list.xml"};
    files.AddFile(
        "C:\\Ovalink\\Kitbay\\list.xml",
        fakes::ManifestText(
            base::ComponentKind::kChannel,
            fakes::OfferText(
                base::ComponentKind::kChannel,
                {.id = "news", .name = "News", .version = "2", .url = "p.example/news.zip"})));
    page.new_components.addon.push_back(
        {.id = "notes", .name = "Notes", .url = "p.example/notes.zip"});
    page.rows.showUpdates("updatedaddons", "Notes", "1", "d", 5);
    page.rows.fillDivWithUpdates("installedtransports", "Mail", "1", "d", 6, false, false);
    page.rows.FillEmptyDivHeader("installedchannels", "");
    page.rows.fillDivWithUpdates("installedchannels", "News", "1", "d", 7, false, false);
    suite_objects.Find(kDownload)->requests.clear();
  }

  platform::HtmlNodeRef Button(const std::string& container, int button) const {
    return At(container)->Child(0)->Child(1)->Child(0)->Child(1)->Child(button);
  }
  void Click(const platform::HtmlNodeRef& button) { window.document()->Click(button); }
  const std::vector<std::string>& Requests() { return suite_objects.Find(kDownload)->requests; }
};

TEST_F(ComponentClicks, InstallAsksForThePackageAndRemembersTheRow) {
  Click(Button("updatedaddons", 0));
  EXPECT_THAT(Requests(), ElementsAre(HasSubstr("<destpath>C:\\Ovalink\\Temp\\notes.zip<")));
  EXPECT_EQ(program.exchange.pending_packages.addon.name, "notes");
  EXPECT_EQ(program.exchange.pending_packages.addon.row_id, "5");
  EXPECT_EQ(program.exchange.pending_packages.addon.row_name, "Notes");
  EXPECT_EQ(program.exchange.pending_packages.channel.row_id, "");
  EXPECT_EQ(Log(), Header());
}

TEST_F(ComponentClicks, WhileANewComponentArrivesWhatIsInstalledCannotBeChanged) {
  Click(Button("updatedaddons", 0));
  EXPECT_TRUE(Button("updatedaddons", 0)->Disabled());
  EXPECT_TRUE(Button("installedtransports", 0)->Disabled());
  EXPECT_TRUE(Button("installedtransports", 1)->Disabled());
}

TEST_F(ComponentClicks, ARefusedInstallationLeavesAllButtonsOn) {
  suite_objects.Find(kDownload)->request_failure = base::Failure(70, "Permission denied");
  Click(Button("updatedaddons", 0));
  EXPECT_FALSE(Button("updatedaddons", 0)->Disabled());
  EXPECT_FALSE(Button("installedtransports", 0)->Disabled());
  EXPECT_EQ(program.exchange.pending_packages.addon.row_id, "");
}

TEST_F(ComponentClicks, AnInstallationAfterAFailedUpdateChangesNoInstalledRowButStillRestarts) {
  page.state.update_in_progress = true;
  program.session.restart = true;
  Click(Button("updatedaddons", 0));
  EXPECT_FALSE(page.state.update_in_progress);
  EXPECT_TRUE(program.session.restart);
}

TEST_F(ComponentClicks, AnAnswerWithinTheRequestGivesTheButtonsBackForGood) {
  page.sources.PendingSources.clear();
  auto* download = suite_objects.Find(kDownload);
  download->while_asked = [&] { download->receiver->Exception("/notes.zip", "404 Not Found"); };
  Click(Button("updatedaddons", 0));
  EXPECT_EQ(Requests().size(), 1U);
  EXPECT_EQ(program.exchange.pending_packages.addon.name, "");
  EXPECT_FALSE(Button("updatedaddons", 0)->Disabled());
  EXPECT_FALSE(Button("installedtransports", 0)->Disabled());
  EXPECT_FALSE(page.state.download_in_progress);
}

TEST_F(ComponentClicks, UpdateStartsTheFlowOfItsKind) {
  Click(Button("installedchannels", 1));
  EXPECT_THAT(Requests(), ElementsAre(HasSubstr("<destpath>C:\\Ovalink\\Temp\\news.zip<")));
  EXPECT_EQ(program.exchange.pending_packages.channel.row_id, "7");
  EXPECT_TRUE(program.session.restart);
}

TEST_F(ComponentClicks, RemoveTakesRowAndEntryAway) {
  Click(Button("installedchannels", 0));
  EXPECT_EQ(At("installedchannels")->ChildCount(), 0);
  EXPECT_THAT(files.Bytes("C:\\Ovalink\\Datastore\\olregistry.xml").value_or("(none)"),
              ::testing::Not(HasSubstr("news")));
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_EQ(Log(), Header());
}

}  // namespace
}  // namespace kitbay::app
