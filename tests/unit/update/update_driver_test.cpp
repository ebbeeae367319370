#include "update/update_driver.h"

#include "exchange_fixture.h"

namespace kitbay::update {
namespace {

using platform::LocalTime;
using testing::ElementsAre;
using testing::IsEmpty;

class DirectoryPreference : public ExchangeTest {};

TEST_F(DirectoryPreference, EmptyFirstSourceShowsLocalData) {
  SetSources("<preference url=''/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, FreshUserWithAnEmptySeedGetsOneEmptySourceAndSendsNothing) {
  files_.AddFile("C:\\Suite\\Kitbay\\DirectoryPreference.xml",
                 "<root><preferences><preference url=''/></preferences></root>");
  fakes::MemoryFileSystemObject file_system(files_);
  source_file_.MakeDirectoryPreferenceFile(&file_system);
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, PatternOfNamesIsNoCachedManifest) {
  AddManifest("a.xml");
  SetSources("<preference url='updates.example/.'/><preference url='other.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("other.example/b.xml"));
  EXPECT_EQ(downloads_.documents.size(), 1U);
}

TEST_F(DirectoryPreference, FirstSourceEndingInASlashShowsLocalDataEvenWithFurtherSources) {
  SetSources("<preference url='updates.example/'/><preference url='other.example/a.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("updates.example/", "other.example/a.xml"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, FirstSourceWithoutACachedManifestShowsLocalDataAndIsAsked) {
  SetSources(
      "<preference url='updates.example/v/components.xml'/>"
      "<preference url='other.example/a.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(downloads_.documents,
              ElementsAre(ManifestRequest("updates.example", "/v/components.xml")));
  EXPECT_THAT(sources_.PendingSources,
              ElementsAre("updates.example/v/components.xml", "other.example/a.xml"));
  EXPECT_FALSE(sources_.UsedCachedManifest);
}

TEST_F(DirectoryPreference, MissingSourceFileIsASubscriptErrorAndShowsWhatIsInstalled) {
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetDirectoryPreferenceFile", 9,
                                              "Subscript out of range")));
}

TEST_F(DirectoryPreference, SourceListEmptiedByTheUserIsASubscriptError) {
  SetSources("");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetDirectoryPreferenceFile", 9,
                                              "Subscript out of range")));
}

TEST_F(DirectoryPreference, WhereTheSuiteMayNotBeChangedNoSourceIsAsked) {
  settings_.may_change_suite = false;
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, EachRunMakesTheSourcesPendingOnceMore) {
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("one.example/a.xml", "two.example/b.xml"));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("one.example/a.xml", "two.example/b.xml",
                                                   "one.example/a.xml", "two.example/b.xml"));
}

TEST_F(DirectoryPreference, RunWhileASourceIsAskedOnlyAppendsAndTheAnswersAskTheRest) {
  SetSources("<preference url='one.example/a.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.PendingSources,
              ElementsAre("one.example/a.xml", "one.example/a.xml", "two.example/b.xml"));
  const std::string a = ManifestRequest("one.example", "/a.xml");
  const std::string b = ManifestRequest("two.example", "/b.xml");
  EXPECT_THAT(downloads_.documents, ElementsAre(a));
  events_.Message("/a.xml", "Result", "true");
  EXPECT_THAT(downloads_.documents, ElementsAre(a, a));
  events_.Message("/a.xml", "Result", "true");
  EXPECT_THAT(downloads_.documents, ElementsAre(a, a, b));
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  AddManifest("b.xml");
  events_.Message("/b.xml", "Result", "true");
  EXPECT_THAT(downloads_.documents, testing::SizeIs(3));
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
}

TEST_F(DirectoryPreference, RunWhileASourceIsAskedThatFailsDoesNotRetryIt) {
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  driver_.GetDirectoryPreferenceFile();
  events_.Exception("/a.xml", "refused");
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml"),
                                                ManifestRequest("two.example", "/b.xml")));
}

TEST_F(DirectoryPreference, RunWhileASourceIsAskedLeavesCachedListsToTheAnswer) {
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
}

TEST_F(DirectoryPreference, RunAfterARefusedRequestAsksAgain) {
  SetSources("<preference url='one.example/a.xml'/>");
  downloads_.failure.emplace(base::RuntimeError::kInvalidProcedureCall);
  driver_.GetDirectoryPreferenceFile();
  downloads_.failure.reset();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml")));
}

TEST_F(DirectoryPreference, RunWithANewDownloadObjectAsksAgain) {
  SetSources("<preference url='one.example/a.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  requests_.SetDownloadObject(nullptr);
  requests_.SetDownloadObject(&downloads_);
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, testing::SizeIs(2));
}

TEST_F(DirectoryPreference, RunDuringAPackageLeavesItsStatus) {
  new_components_.addon = {{.id = "sky", .name = "Sky", .url = "p.example/sky.zip"}};
  requests_.InstallNewAddons(InstallClick(base::ComponentKind::kAddon, "Sky"));
  SetSources("<preference url='one.example/a.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_EQ(Status(), "Downloading Sky Addon.");
  SetSources("<preference url='two.example/b.xml'/>");
  AddManifest("b.xml");
  sources_.PendingSources.clear();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_EQ(Status(), "Downloading Sky Addon.");
}

TEST_F(DirectoryPreference, SeedIsNoCachedManifest) {
  files_.AddFile("C:\\Suite\\Kitbay\\DirectoryPreference.xml",
                 "<root><preferences><preference url=''/></preferences></root>");
  SetSources(
      "<preference url='one.example/DirectoryPreference.xml'/>"
      "<preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_FALSE(sources_.UsedCachedManifest);
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
}

TEST_F(DirectoryPreference, ManifestOfTodayIsUsedAndNothingIsAsked) {
  SetSources("<preference url='updates.example/components.xml'/>");
  AddManifest("components.xml", {2026, 11, 21, 0, 0, 0});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_THAT(Text("updatedaddons"), testing::HasSubstr("Offer of components.xml"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_TRUE(sources_.UsedCachedManifest);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DirectoryPreference, ManifestOfYesterdayIsAskedForAgainAndLocalDataShownMeanwhile) {
  SetSources("<preference url='updates.example/components.xml'/>");
  AddManifest("components.xml", {2026, 11, 20, 10, 15, 30});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(LocalDataIsShown()) << html_->TreeText();
  EXPECT_THAT(downloads_.documents,
              ElementsAre(ManifestRequest("updates.example", "/components.xml")));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("updates.example/components.xml"));
  EXPECT_FALSE(sources_.UsedCachedManifest);
  EXPECT_THAT(log_.entries, IsEmpty());
}

struct Day {
  LocalTime fetched;
  LocalTime now;
  bool is_fresh;
};

class CalendarDay : public DirectoryPreference, public testing::WithParamInterface<Day> {};

TEST_P(CalendarDay, DecidesWhetherAManifestIsFresh) {
  SetSources("<preference url='updates.example/components.xml'/>");
  AddManifest("components.xml", GetParam().fetched);
  clock_.SetNow(GetParam().now);
  driver_.GetDirectoryPreferenceFile();
  EXPECT_EQ(sources_.UsedCachedManifest, GetParam().is_fresh);
  EXPECT_EQ(downloads_.documents.empty(), GetParam().is_fresh);
  EXPECT_EQ(DetailsAreShown(), GetParam().is_fresh);
  EXPECT_EQ(LocalDataIsShown(), !GetParam().is_fresh);
}

INSTANTIATE_TEST_SUITE_P(
    Times, CalendarDay,
    testing::Values(
        // Fetched just before midnight: fresh until then, stale a minute later.
        Day{{2026, 11, 20, 23, 59, 30}, {2026, 11, 20, 23, 59, 59}, true},
        Day{{2026, 11, 20, 23, 59, 30}, {2026, 11, 21, 0, 0, 30}, false},
        Day{{2026, 11, 21, 0, 0, 0}, {2026, 11, 21, 23, 59, 59}, true},
        Day{{2026, 11, 21, 23, 59, 59}, {2026, 11, 21, 0, 0, 0}, true},
        // Less than a day ago, but on another date; a month and a year ago on the same day.
        Day{{2026, 11, 20, 12, 0, 0}, {2026, 11, 21, 11, 0, 0}, false},
        Day{{2026, 10, 21, 12, 0, 0}, {2026, 11, 21, 12, 0, 0}, false},
        Day{{2025, 11, 21, 12, 0, 0}, {2026, 11, 21, 12, 0, 0}, false},
        // Across the end of a month, a year, a February.
        Day{{2026, 10, 31, 23, 0, 0}, {2026, 11, 1, 1, 0, 0}, false},
        Day{{2025, 12, 31, 23, 0, 0}, {2026, 1, 1, 1, 0, 0}, false},
        Day{{2028, 2, 28, 23, 0, 0}, {2028, 2, 29, 1, 0, 0}, false},
        Day{{2028, 2, 29, 1, 0, 0}, {2028, 2, 29, 2, 0, 0}, true},
        // A file from the future, because the clock was set back, counts as fetched today.
        Day{{2026, 11, 22, 0, 0, 0}, {2026, 11, 21, 23, 0, 0}, true},
        Day{{2027, 1, 1, 0, 0, 0}, {2026, 12, 31, 0, 0, 0}, true}));

TEST_F(DirectoryPreference, PendingEntryOfAFreshSourceIsFoundWithoutLetterCase) {
  sources_.PendingSources = {"Updates.EXAMPLE/Components.xml"};
  SetSources("<preference url='updates.example/components.xml'/>");
  AddManifest("components.xml");
  driver_.GetDirectoryPreferenceFile();
  // The earlier entry is the first match; the one appended now stays and is asked.
  EXPECT_THAT(sources_.PendingSources, ElementsAre("updates.example/components.xml"));
  EXPECT_TRUE(sources_.UsedCachedManifest);
  EXPECT_THAT(downloads_.documents,
              ElementsAre(ManifestRequest("updates.example", "/components.xml")));
}

TEST_F(DirectoryPreference, OnlyTheFirstMatchingPendingEntryGoes) {
  sources_.PendingSources = {"x.example/x.xml", "one.example/a.xml", "y.example/y.xml",
                             "one.example/a.xml"};
  SetSources("<preference url='one.example/a.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("x.example/x.xml", "y.example/y.xml",
                                                   "one.example/a.xml", "one.example/a.xml"));
}

TEST_F(DirectoryPreference, EqualSourcesOfTheListGoOnceEach) {
  SetSources("<preference url='one.example/a.xml'/><preference url='ONE.example/A.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_TRUE(DetailsAreShown());
}

TEST_F(DirectoryPreference, DuplicateStaysPendingWhenOnlyOneRunOfItIsFresh) {
  SetSources("<preference url='one.example/a.xml'/>");
  AddManifest("a.xml", {2026, 11, 20});
  driver_.GetDirectoryPreferenceFile();
  files_.SetLastModified("C:\\Suite\\Kitbay\\a.xml", {2026, 11, 21});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("one.example/a.xml"));
  EXPECT_TRUE(sources_.UsedCachedManifest);
}

TEST_F(DirectoryPreference, StaleSourceAfterAFreshOneIsAskedAlone) {
  SetSources(
      "<preference url='one.example/a.xml'/><preference url='two.example/b.xml'/>"
      "<preference url='three.example/c.xml'/>");
  AddManifest("a.xml");
  AddManifest("b.xml", {2026, 11, 20});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(sources_.UsedCachedManifest);
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/b.xml", "three.example/c.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_TRUE(LocalDataIsShown());
}

TEST_F(DirectoryPreference, FurtherSourceWithoutAManifestNameIsDroppedWithALogEntry) {
  SetSources("<preference url='one.example/a.xml'/><preference url='two.example/'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::CheckPreferences", 75, "Path/File access error: ")));
}

TEST_F(DirectoryPreference, TabBarOfTheInstalledListsIsWrittenLetterForLetter) {
  EXPECT_STREQ(view::kInstalledBarHolder, "imgtab");
  EXPECT_STREQ(view::kInstalledBarMarkup,
               "<span class='styleclass' style='background:gray;  width:100%; height:33px; "
               "position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' "
               ");'><img src='utrans.gif' id='trans' ><img src='uaddons.gif' id='addons' ></span>");
  SetSources("<preference url='one.example/a.xml'/>");
  AddManifest("a.xml");
  driver_.GetDirectoryPreferenceFile();
  // The keyboard and screen readers need more than the markup says; the view adds it.
  const auto expected = std::make_shared<fakes::FakeHtmlDocument>(
      "<div id='imgtab'><span class='styleclass' role='tablist' style='background:gray;  "
      "width:100%; "
      "height:33px; position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' "
      ");' role='tab' tabindex='0' alt='Channels' aria-selected='true'><img src='utrans.gif' "
      "id='trans' role='tab' tabindex='0' alt='Messaging services' aria-selected='false'><img "
      "src='uaddons.gif' id='addons' role='tab' tabindex='0' alt='Addons' "
      "aria-selected='false'></span></div>");
  EXPECT_EQ(fakes::FakeHtmlDocument::TreeText(html_->ById("imgtab")),
            fakes::FakeHtmlDocument::TreeText(expected->ById("imgtab")));
}

TEST_F(DirectoryPreference, TabBarIsWrittenBeforeTheSourcesAreAsked) {
  SetSources("<preference url='one.example/a.xml'/>");
  AddManifest("a.xml", {2026, 11, 20});
  html_->FailMember("AllItem", base::Failure(base::RuntimeError::kObjectVariableNotSet), 1);
  driver_.GetDirectoryPreferenceFile();
  ASSERT_FALSE(log_.entries.empty());
  EXPECT_EQ(log_.entries.front().procedure, "Kitbay::AddImageTab");
  EXPECT_THAT(downloads_.documents, testing::SizeIs(1));
}

TEST_F(DirectoryPreference, MissingCategoryIsLoggedAndNoDetailsAreShown) {
  SetSources("<preference url='one.example/a.xml'/>");
  AddManifest("a.xml");
  html_->ById("category")->SetInnerHtml("<b>Components</b>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_FALSE(state_.installed_lists_current);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetDirectoryPreferenceFile", 91, kNotSet)));
}

TEST_F(DirectoryPreference, ManifestNameThatWouldLeaveTheFolderIsNeverAsked) {
  SetSources(
      "<preference url='one.example/..\\..\\evil.xml'/>"
      "<preference url='two.example/b.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckPreferences", 75,
                                              "Path/File access error: ..\\..\\evil.xml")));
}

}  // namespace
}  // namespace kitbay::update
