#include "update/transfer_events.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "exchange_fixture.h"
#include "view/page_ids.h"

namespace kitbay::update {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMessage = " Kitbay::OvTransportEvents_Message";
constexpr const char* kException = "Kitbay::OvTransportEvents_Exception";

class Transfer : public ExchangeTest {
 protected:
  void Begin(const std::string& status, const std::string& total) {
    window_.status_bar().SetPanelText(platform::kStatusPanel, status);
    events_.Message("/a.xml", "Total-Length", total);
    window_.calls().Clear();
  }

  void Received(const std::string& bytes) { events_.Message("/a.xml", "Received", bytes); }

  /// The exchange after the first of `sources` has been contacted.
  void Ask(const std::vector<std::string>& sources) {
    tabs_.ShowLocalData();
    sources_.UpdateSources = sources;
    sources_.PendingSources = sources;
    requests_.CheckPreferences();
    downloads_.documents.clear();
  }

  void Finish(const std::string& path) { events_.Message(path, "Result", "true"); }

  /// Adds rows with buttons to each list, all disabled as during a transfer.
  void AddButtons() {
    for (const base::ComponentKind kind : base::kComponentKinds) {
      rows_.fillDivWithUpdates(view::kInstalledContainers[kind], "Old", "1", "", 1, false, false);
      rows_.showUpdates(view::kUpdatedContainers[kind], "New", "1", "", 1);
    }
    SwitchButtonsOff();
  }

  /// As the page and the update flows do when they have requested a package.
  void SwitchButtonsOff() {
    buttons_.DisableOtherDownload();
    buttons_.DisableOtherUpdatedDownload();
  }

  /// For each button of the lists, whether it is disabled.
  std::vector<bool> ButtonsOff() const {
    std::vector<bool> off;
    for (const auto* containers : {&view::kInstalledContainers, &view::kUpdatedContainers}) {
      for (const base::ComponentKind kind : base::kComponentKinds) {
        const std::string markup = fakes::FakeHtmlDocument::Outer(html_->ById((*containers)[kind]));
        for (std::size_t at = markup.find("<input"); at != std::string::npos;
             at = markup.find("<input", at + 1)) {
          const std::string tag = markup.substr(at, markup.find('>', at) - at);
          off.push_back(tag.find(" disabled") != std::string::npos);
        }
      }
    }
    return off;
  }

  bool ButtonsAreGivenBack() const {
    const std::vector<bool> off = ButtonsOff();
    return !state_.download_in_progress && !off.empty() && std::ranges::count(off, true) == 0;
  }

  bool ButtonsAreOff() const {
    const std::vector<bool> off = ButtonsOff();
    return state_.download_in_progress && !off.empty() && std::ranges::count(off, false) == 0;
  }
};

TEST_F(Transfer, TotalLengthEmptiesAndShowsTheBar) {
  events_.Message("/a.xml", "Total-Length", "4096");
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetValue 0", "SetVisible true"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Transfer, NameOfTheTotalLengthIsReadWithoutLetterCase) {
  events_.Message("/a.xml", "TOTAL-length", "4096");
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetValue 0", "SetVisible true"));
}

TEST_F(Transfer, ProgressMovesTheBarAndAddsToTheStatusText) {
  Begin("Downloading Chat Addon.", "4096");
  Received("1024");
  EXPECT_THAT(
      window_.calls().all(),
      ElementsAre("SetValue 25", "SetPanelText 2 Downloading Chat Addon. Completed 1Kb of 4Kb"));
  Received("2048");
  EXPECT_EQ(Status(), "Downloading Chat Addon. Completed 2Kb of 4Kb");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Transfer, EachTotalLengthSavesTheStatusTextAgain) {
  Begin("One.", "4096");
  Received("1024");
  Begin("Two.", "8192");
  Received("2048");
  EXPECT_EQ(Status(), "Two. Completed 2Kb of 8Kb");
}

struct Progress {
  const char* received;
  const char* total;
  const char* text;
  int percent;
};

void PrintTo(const Progress& progress, std::ostream* out) {
  *out << progress.received << " of " << progress.total;
}

class ProgressTexts : public Transfer, public testing::WithParamInterface<Progress> {};

TEST_P(ProgressTexts, RoundToTheNearestTiesToEven) {
  Begin("S", GetParam().total);
  Received(GetParam().received);
  EXPECT_EQ(Status(), std::string("S") + GetParam().text);
  EXPECT_EQ(window_.calls().all().front(), "SetValue " + std::to_string(GetParam().percent));
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kilobytes, ProgressTexts,
                         testing::Values(Progress{"0", "10240", " Completed 0Kb of 10Kb", 0},
                                         Progress{"511", "10240", " Completed 0Kb of 10Kb", 5},
                                         Progress{"512", "10240", " Completed 0Kb of 10Kb", 5},
                                         Progress{"513", "10240", " Completed 1Kb of 10Kb", 5},
                                         Progress{"1024", "10240", " Completed 1Kb of 10Kb", 10},
                                         Progress{"1535", "10240", " Completed 1Kb of 10Kb", 15},
                                         Progress{"1536", "10240", " Completed 2Kb of 10Kb", 15},
                                         Progress{"1537", "10240", " Completed 2Kb of 10Kb", 15},
                                         Progress{"2559", "10240", " Completed 2Kb of 10Kb", 25},
                                         Progress{"2560", "10240", " Completed 2Kb of 10Kb", 25},
                                         Progress{"2561", "10240", " Completed 3Kb of 10Kb", 25},
                                         Progress{"3584", "10240", " Completed 4Kb of 10Kb", 35},
                                         Progress{"4608", "10240", " Completed 4Kb of 10Kb", 45},
                                         // The total is rounded in the same way.
                                         Progress{"0", "1536", " Completed 0Kb of 2Kb", 0},
                                         Progress{"0", "2560", " Completed 0Kb of 2Kb", 0},
                                         Progress{"0", "512", " Completed 0Kb of 0Kb", 0},
                                         Progress{"0", "1", " Completed 0Kb of 0Kb", 0},
                                         // 2 GB and more.
                                         Progress{"3221225472", "4294967296",
                                                  " Completed 3145728Kb of 4194304Kb", 75}));

INSTANTIATE_TEST_SUITE_P(Percent, ProgressTexts,
                         testing::Values(Progress{"1", "200", " Completed 0Kb of 0Kb", 0},
                                         Progress{"3", "200", " Completed 0Kb of 0Kb", 2},
                                         Progress{"5", "200", " Completed 0Kb of 0Kb", 2},
                                         Progress{"7", "200", " Completed 0Kb of 0Kb", 4},
                                         Progress{"199", "200", " Completed 0Kb of 0Kb", 100},
                                         Progress{"-5", "200", " Completed 0Kb of 0Kb", 0}));

INSTANTIATE_TEST_SUITE_P(NotBelowTheTotal, ProgressTexts,
                         // The text is unchanged.
                         testing::Values(Progress{"4096", "4096", "", 100},
                                         Progress{"9000", "4096", "", 100},
                                         Progress{"4096", "4096.0", "", 100}));

TEST_F(Transfer, NegativeTotalShowsNothingButAnEmptyBar) {
  Begin("S", "-5");
  Received("10");
  EXPECT_EQ(Status(), "S");
  EXPECT_EQ(window_.progress_bar().value(), 0);
}

TEST_F(Transfer, FinalProgressLeavesTheTextAndTheEndFillsTheBar) {
  Begin("S", "2048");
  Received("1024");
  Received("2048");
  EXPECT_EQ(Status(), "S Completed 1Kb of 2Kb");
  window_.calls().Clear();
  Finish("/a.xml");
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetValue 100"));
}

TEST_F(Transfer, EndIsAnnouncedToScreenReadersAndProgressIsNot) {
  Begin("S", "2048");
  Received("1024");
  EXPECT_THAT(window_.status_bar().announced, IsEmpty());
  Finish("/a.xml");
  EXPECT_THAT(window_.status_bar().announced, ElementsAre("S Completed 1Kb of 2Kb"));
}

TEST_F(Transfer, ProgressBeforeAnyTotalDividesByZero) {
  window_.status_bar().SetPanelText(platform::kStatusPanel, "S");
  window_.calls().Clear();
  Received("10");
  EXPECT_THAT(log_.entries, ElementsAre(Entry(kMessage, 11, "Division by zero")));
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_EQ(Status(), "S");
}

TEST_F(Transfer, TotalThatIsNotANumberDividesByZero) {
  for (const char* total : {"", "many", "0"}) {
    Begin("S", total);
    log_.entries.clear();
    Received("10");
    EXPECT_THAT(log_.entries, ElementsAre(Entry(kMessage, 11, "Division by zero"))) << total;
    EXPECT_EQ(Status(), "S");
  }
}

TEST_F(Transfer, EndIsReadInAnyLetterCaseAndWhateverTheFieldName) {
  for (const char* value : {"true", "True", "TRUE", "tRuE"}) {
    window_.progress_bar().SetValue(0);
    events_.Message("/a.xml", "Total-Length", value);
    EXPECT_EQ(window_.progress_bar().value(), 100) << value;
  }
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Transfer, EndThatNothingWaitsForOnlyFillsTheBar) {
  Ask({"one.example/a.xml"});
  window_.calls().Clear();
  Finish("/other.xml");
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetValue 100"));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("one.example/a.xml"));
  EXPECT_FALSE(sources_.UsedCachedManifest);
  EXPECT_THAT(packages_.calls, IsEmpty());
  EXPECT_FALSE(state_.installed_lists_current);
}

TEST_F(Transfer, LastManifestShowsTheDetailsAndGivesTheButtonsBack) {
  AddButtons();
  Ask({"one.example/a.xml"});
  AddManifest("a.xml");
  Finish("/a.xml");
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_THAT(Text("updatedaddons"), testing::HasSubstr("Offer of a.xml"));
  EXPECT_TRUE(ButtonsAreGivenBack());
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_TRUE(sources_.UsedCachedManifest);
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(packages_.calls, IsEmpty());
}

TEST_F(Transfer, PathOfAManifestIsComparedWithoutLetterCase) {
  Ask({"one.example/Dir/A.xml"});
  Finish("/dIR/a.XML");
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
}

TEST_F(Transfer, ChainAsksOneSourceAfterTheOtherInOrder) {
  Ask({"one.example/a.xml", "two.example/b.xml", "three.example/c.xml"});
  Finish("/a.xml");
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_FALSE(state_.installed_lists_current);
  Finish("/b.xml");
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml"),
                                                ManifestRequest("three.example", "/c.xml")));
  EXPECT_FALSE(state_.installed_lists_current);
  EXPECT_EQ(Status(), "Getting information from server three.example.");
  Finish("/c.xml");
  EXPECT_THAT(downloads_.documents, testing::SizeIs(2));
  EXPECT_TRUE(DetailsAreShown());
}

TEST_F(Transfer, EqualSourcesAreTwoRequests) {
  Ask({"one.example/a.xml", "one.example/a.xml"});
  Finish("/a.xml");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("one.example/a.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml")));
  EXPECT_FALSE(state_.installed_lists_current);
  Finish("/a.xml");
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_THAT(downloads_.documents, testing::SizeIs(1));
  EXPECT_TRUE(DetailsAreShown());
}

TEST_F(Transfer, FailedSourceIsNotAskedAgainThoughItIsPendingTwice) {
  Ask({"one.example/a.xml", "ONE.example/A.xml", "two.example/a.xml"});
  events_.Exception("/a.xml", "refused");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/a.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/a.xml")));
}

TEST_F(Transfer, SourcesOfOnePathOnTwoServersAreDistinguishedByTheirOrder) {
  Ask({"one.example/a.xml", "two.example/a.xml"});
  Finish("/a.xml");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/a.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/a.xml")));
}

TEST_F(Transfer, ExceptionIsLoggedShownAndHidesTheProgress) {
  window_.status_bar().SetPanelText(platform::kStatusPanel, "S");
  window_.calls().Clear();
  sources_.PendingSources = {"one.example/other.xml"};
  events_.Exception("/a.xml", "host not found");
  EXPECT_THAT(log_.entries, ElementsAre(Entry(kException, 0, "host not found")));
  EXPECT_THAT(desktop_.calls(),
              ElementsAre("ShowMessage [/a.xml      host not found] [Kitbay] 64"));
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetPanelText 2 ", "SetVisible false"));
}

TEST_F(Transfer, TimeOutIsShownAsSentWithoutThePath) {
  for (const char* message : {"connection timed out", "Connection Timed Out"}) {
    events_.Exception("/a.xml", message);
    EXPECT_EQ(desktop_.calls().back(), std::string("ShowMessage [") + message + "] [Kitbay] 64");
  }
}

TEST_F(Transfer, MessageThatOnlyContainsTheTimeOutIsShownWithThePath) {
  events_.Exception("/a.xml", "connection timed out ");
  EXPECT_EQ(desktop_.calls().back(), "ShowMessage [/a.xml      connection timed out ] [Kitbay] 64");
}

TEST_F(Transfer, FailedOnlySourceWithoutAnyManifestGivesTheButtonsBackAndKeepsThePage) {
  AddButtons();
  Ask({"one.example/a.xml"});
  window_.calls().Clear();
  events_.Exception("/A.XML", "connection timed out");
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_FALSE(state_.installed_lists_current);
  EXPECT_FALSE(UpdatesControlIsOn());
  EXPECT_TRUE(ButtonsAreGivenBack());
  // The status is cleared when the failure arrives and again at the end.
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetPanelText 2 ", "SetVisible false",
                                                 "SetPanelText 2 ", "SetVisible false"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
}

TEST_F(Transfer, FailedLastSourceAfterAFreshManifestShowsTheDetails) {
  AddButtons();
  Ask({"one.example/a.xml"});
  sources_.UsedCachedManifest = true;
  events_.Exception("/a.xml", "404 Not Found");
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_TRUE(ButtonsAreGivenBack());
}

TEST_F(Transfer, FailureWhileASourceIsStillPendingEndsThere) {
  AddButtons();
  Ask({"one.example/a.xml", "two.example/b.xml"});
  events_.Exception("/a.xml", "refused");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/b.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_EQ(Status(), "Getting information from server two.example.");
  EXPECT_FALSE(ButtonsAreGivenBack());
  EXPECT_FALSE(state_.installed_lists_current);
}

class FailingPlace : public Transfer, public testing::WithParamInterface<std::size_t> {};

TEST_P(FailingPlace, DropsThatSourceAndTheExchangeGoesOn) {
  const std::vector<std::string> paths = {"/a.xml", "/b.xml", "/c.xml"};
  Ask({"one.example/a.xml", "two.example/b.xml", "three.example/c.xml"});
  for (std::size_t i = 0; i < paths.size(); ++i) {
    ASSERT_FALSE(state_.installed_lists_current) << "before answer " << i;
    if (i == GetParam()) {
      events_.Exception(paths[i], "connection timed out");
    } else {
      Finish(paths[i]);
    }
  }
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml"),
                                                ManifestRequest("three.example", "/c.xml")));
  EXPECT_THAT(desktop_.calls(), ElementsAre("ShowMessage [connection timed out] [Kitbay] 64"));
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Places, FailingPlace, testing::Values(0, 1, 2));

TEST_F(Transfer, AllSourcesFailingShowOneMessageEachAndNoDetails) {
  AddButtons();
  Ask({"one.example/a.xml", "two.example/b.xml"});
  events_.Exception("/a.xml", "x");
  EXPECT_FALSE(ButtonsAreGivenBack());
  events_.Exception("/b.xml", "y");
  EXPECT_TRUE(ButtonsAreGivenBack());
  EXPECT_FALSE(state_.installed_lists_current);
  EXPECT_THAT(desktop_.calls(), ElementsAre("ShowMessage [/a.xml      x] [Kitbay] 64",
                                            "ShowMessage [/b.xml      y] [Kitbay] 64"));
}

TEST_F(Transfer, FirstPendingSourceWithoutASlashGoesWhateverFailed) {
  sources_.PendingSources = {"plain.xml", "two.example/b.xml"};
  events_.Exception("/unrelated", "x");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/b.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
}

TEST_F(Transfer, OnlyTheFirstPendingSourceIsComparedWithTheFailedPath) {
  sources_.PendingSources = {"one.example/a.xml", "two.example/b.xml"};
  events_.Exception("/b.xml", "x");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("one.example/a.xml", "two.example/b.xml"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
}

TEST_F(Transfer, EventsOfARefusedLogStillEndTheExchange) {
  Ask({"one.example/a.xml"});
  log_.failure = std::make_exception_ptr(base::Failure(base::RuntimeError::kDiskFull));
  events_.Message("/a.xml", "Received", "1");
  Finish("/a.xml");
  EXPECT_TRUE(DetailsAreShown());
}

class ManifestAnswers : public Transfer {
 protected:
  static constexpr const char* kManifestPath = "C:\\Suite\\Kitbay\\a.xml";
  static constexpr const char* kCopyPath = "C:\\Suite\\Kitbay\\a.xml.before";
  static constexpr const char* kRefusal = "The server's answer is not a list of components";

  /// Writes over the previous manifest, as the download object does.
  void Arrive(const std::string& bytes) {
    files_.AddFile(kManifestPath, bytes);
    Finish("/a.xml");
  }

  void AskAgain() {
    AddManifest("a.xml", {2026, 11, 20});
    before_ = *files_.Bytes(kManifestPath);
    SetSources("<preference url='one.example/a.xml'/>");
    driver_.GetDirectoryPreferenceFile();
  }

  std::string before_;
};

class NoManifest : public ManifestAnswers, public testing::WithParamInterface<const char*> {};

TEST_P(NoManifest, IsAFailedSourceAndThePreviousOneStays) {
  AskAgain();
  Arrive(GetParam());
  EXPECT_EQ(files_.Bytes(kManifestPath), before_);
  EXPECT_EQ(files_.LastModified(kManifestPath), (platform::LocalTime{2026, 11, 20}));
  EXPECT_FALSE(files_.IsFile(kCopyPath));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(kException, 0, kRefusal)));
  EXPECT_THAT(desktop_.calls(),
              ElementsAre(std::string("ShowMessage [/a.xml      ") + kRefusal + "] [Kitbay] 64"));
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_FALSE(sources_.UsedCachedManifest);
}

TEST_P(NoManifest, LeavesNothingWhereThereWasNone) {
  Ask({"one.example/a.xml"});
  Arrive(GetParam());
  EXPECT_THAT(files_.Names("C:\\Suite\\Kitbay"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Bytes, NoManifest,
                         testing::Values("", "<html><body><form>Log in</form></body></html>",
                                         "not found", "<components><addons></components>",
                                         "<Components/>", "<!DOCTYPE components><components/>",
                                         "<components/><components/>"));

TEST_F(ManifestAnswers, ASourceThatWasRefusedIsAskedAgainAtTheNextStart) {
  AskAgain();
  Arrive("log in");
  downloads_.documents.clear();
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml")));
  Arrive("<components/>");
  EXPECT_EQ(files_.Bytes(kManifestPath), "<components/>");
  EXPECT_FALSE(files_.IsFile(kCopyPath));
  EXPECT_TRUE(DetailsAreShown());
}

TEST_F(ManifestAnswers, ThePreviousOneIsBackWhenTheProgramEndedBeforeItLooked) {
  AskAgain();
  files_.AddFile(kManifestPath, "log in");
  requests_.SetDownloadObject(&downloads_);
  driver_.GetDirectoryPreferenceFile();
  EXPECT_EQ(files_.Bytes(kManifestPath), before_);
}

TEST_F(ManifestAnswers, ATransferThatFailsInTheMiddleOfTheFileLeavesTheOneOfBefore) {
  AskAgain();
  files_.AddFile(kManifestPath, "<compon");
  events_.Exception("/a.xml", "connection timed out");
  EXPECT_EQ(files_.Bytes(kManifestPath), before_);
}

TEST_F(ManifestAnswers, ATransferThatFailsWithoutTouchingTheFileLeavesNoCopy) {
  AskAgain();
  events_.Exception("/a.xml", "connection timed out");
  EXPECT_EQ(files_.Bytes(kManifestPath), before_);
  EXPECT_FALSE(files_.IsFile(kCopyPath));
}

TEST_F(ManifestAnswers, TheNextSourceIsAskedAfterARefusedOneOfTheSamePath) {
  Ask({"one.example/a.xml", "two.example/a.xml", "ONE.example/a.xml"});
  Arrive("log in");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/a.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/a.xml")));
  Arrive("<components/>");
  EXPECT_TRUE(DetailsAreShown());
}

TEST_F(ManifestAnswers, OneThatIsTooLargeIsRefused) {
  constexpr std::size_t kMost = 64 * 1024 * 1024;
  AskAgain();
  const std::string start = "<components/>";
  Arrive(start + std::string(kMost + 1 - start.size(), ' '));
  EXPECT_EQ(files_.Bytes(kManifestPath), before_);
  EXPECT_THAT(
      log_.entries,
      ElementsAre(Entry(kException, 0, "The server's list of components is larger than 64 MB")));
  driver_.GetDirectoryPreferenceFile();
  Arrive(start + std::string(kMost - start.size(), ' '));
  EXPECT_EQ(files_.Bytes(kManifestPath)->size(), kMost);
}

TEST_F(ManifestAnswers, OneThatCannotBePutAsideIsStillRequested) {
  files_.FailWritesTo(kCopyPath, base::RuntimeError::kDiskFull);
  AskAgain();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml")));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckPreferences", 61, "Disk full")));
}

TEST_F(ManifestAnswers, AFailureThatCannotBeLoggedStillEndsTheExchange) {
  AddButtons();
  Ask({"one.example/a.xml", "two.example/b.xml"});
  log_.failure = std::make_exception_ptr(base::Failure(base::RuntimeError::kDiskFull));
  events_.Exception("/a.xml", "refused");
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_THAT(desktop_.calls(), ElementsAre("ShowMessage [/a.xml      refused] [Kitbay] 64"));
  events_.Exception("/b.xml", "refused");
  EXPECT_TRUE(ButtonsAreGivenBack());
  downloads_.documents.clear();
  Ask({"one.example/a.xml"});
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_TRUE(requests_.unanswered().Contains("/a.xml"));
}

class PackageAnswers : public Transfer {
 protected:
  PackageAnswers() {
    pending_packages_ = {.addon = {.file_path = "/p/chat.zip", .name = "chat"},
                         .transport = {.file_path = "/p/mail.zip", .name = "mail"},
                         .channel = {.file_path = "/p/news.zip", .name = "news"}};
  }
};

TEST_F(PackageAnswers, AddonIsUnpackedThenTheInstallationEnds) {
  Finish("/P/Chat.ZIP");
  EXPECT_THAT(packages_.calls,
              ElementsAre("Unpack chat C:\\Suite\\Temp\\chat.zip", "InstallProcess"));
  EXPECT_EQ(pending_packages_.addon.name, "");
  EXPECT_EQ(pending_packages_.transport.name, "mail");
  EXPECT_EQ(pending_packages_.channel.name, "news");
  EXPECT_EQ(window_.progress_bar().value(), 100);
}

TEST_F(PackageAnswers, TransportIsUnpackedThenTheInstallationEnds) {
  Finish("/p/mail.zip");
  EXPECT_THAT(packages_.calls,
              ElementsAre("UnpackTransport mail C:\\Suite\\Temp\\mail.zip", "InstallProcess"));
}

TEST_F(PackageAnswers, ChannelIsUnpackedThenTheInstallationEnds) {
  Finish("/p/news.zip");
  EXPECT_THAT(packages_.calls,
              ElementsAre("UnpackChannel news C:\\Suite\\Temp\\news.zip", "InstallProcess"));
}

TEST_F(PackageAnswers, EqualPathsAnswerTheAddonThenTheTransportThenTheChannel) {
  pending_packages_.transport.file_path = "/p/chat.zip";
  pending_packages_.channel.file_path = "/p/chat.zip";
  Finish("/p/chat.zip");
  Finish("/p/chat.zip");
  Finish("/p/chat.zip");
  Finish("/p/chat.zip");
  EXPECT_THAT(packages_.calls,
              ElementsAre("Unpack chat C:\\Suite\\Temp\\chat.zip", "InstallProcess",
                          "UnpackTransport mail C:\\Suite\\Temp\\mail.zip", "InstallProcess",
                          "UnpackChannel news C:\\Suite\\Temp\\news.zip", "InstallProcess"));
}

TEST_F(PackageAnswers, AnswerWithoutAPendingPackageUnpacksNothing) {
  pending_packages_ = {};
  Finish("");
  Finish("/p/chat.zip");
  EXPECT_THAT(packages_.calls, IsEmpty());
}

TEST_F(PackageAnswers, FailedPackageIsForgottenAndGivesTheButtonsBack) {
  AddButtons();
  events_.Exception("/P/chat.zip", "404 Not Found");
  EXPECT_EQ(pending_packages_.addon.name, "");
  EXPECT_EQ(pending_packages_.transport.name, "mail");
  EXPECT_TRUE(ButtonsAreGivenBack());
  Finish("/p/chat.zip");
  EXPECT_THAT(packages_.calls, IsEmpty());
}

TEST_F(PackageAnswers, AskedAndAnsweredFromTheListOfNewComponents) {
  pending_packages_ = {};
  new_components_.channel.push_back({.id = "sky", .name = "Sky", .url = "p.example/s-1.zip"});
  requests_.InstallNewAddons(InstallClick(base::ComponentKind::kChannel, "sky"));
  Finish("/s-1.zip");
  EXPECT_THAT(packages_.calls,
              ElementsAre("UnpackChannel sky C:\\Suite\\Temp\\sky.zip", "InstallProcess"));
}

TEST_F(PackageAnswers, AnswerWithinTheRequestIsTaken) {
  pending_packages_ = {};
  new_components_.channel.push_back({.id = "sky", .name = "Sky", .url = "p.example/s-1.zip"});
  downloads_.while_asked = [&] { Finish("/s-1.zip"); };
  EXPECT_TRUE(requests_.InstallNewAddons(InstallClick(base::ComponentKind::kChannel, "sky")));
  EXPECT_THAT(packages_.calls,
              ElementsAre("UnpackChannel sky C:\\Suite\\Temp\\sky.zip", "InstallProcess"));
  EXPECT_EQ(pending_packages_.channel.name, "");
}

/// A package is requested while a manifest is on its way.
class PackageBehindAManifest : public Transfer {
 protected:
  static constexpr const char* kStatus = "Downloading Sky Addon.";

  PackageBehindAManifest() { AddButtons(); }

  void AskFor(const std::vector<std::string>& sources) {
    Ask(sources);
    AddManifest("a.xml");
    new_components_.addon = {{.id = "sky", .name = "Sky", .url = "p.example/sky.zip"}};
    requests_.InstallNewAddons(InstallClick(base::ComponentKind::kAddon, "Sky"));
    SwitchButtonsOff();
    downloads_.documents.clear();
  }
};

TEST_F(PackageBehindAManifest, LastManifestShowsTheDetailsAndLeavesTheButtonsOff) {
  AskFor({"one.example/a.xml"});
  Finish("/a.xml");
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_TRUE(ButtonsAreOff()) << html_->TreeText();
  EXPECT_EQ(Status(), kStatus);
  Finish("/sky.zip");
  EXPECT_THAT(packages_.calls,
              ElementsAre("Unpack sky C:\\Suite\\Temp\\sky.zip", "InstallProcess"));
}

TEST_F(PackageBehindAManifest, FailedLastManifestLeavesTheButtonsOff) {
  AskFor({"one.example/a.xml"});
  events_.Exception("/a.xml", "refused");
  EXPECT_TRUE(ButtonsAreOff()) << html_->TreeText();
  EXPECT_EQ(Status(), kStatus);
  EXPECT_EQ(pending_packages_.addon.name, "sky");
}

TEST_F(PackageBehindAManifest, FailedLastManifestAfterAFreshOneShowsTheDetailsOnly) {
  AskFor({"one.example/a.xml"});
  sources_.UsedCachedManifest = true;
  events_.Exception("/a.xml", "refused");
  EXPECT_TRUE(DetailsAreShown()) << html_->TreeText();
  EXPECT_TRUE(ButtonsAreOff()) << html_->TreeText();
  EXPECT_EQ(Status(), kStatus);
}

TEST_F(PackageBehindAManifest, ItsFailureGivesTheButtonsBackThoughSourcesAreStillAsked) {
  AskFor({"one.example/a.xml", "two.example/b.xml"});
  Finish("/a.xml");
  EXPECT_TRUE(ButtonsAreOff()) << html_->TreeText();
  events_.Exception("/sky.zip", "refused");
  EXPECT_TRUE(ButtonsAreGivenBack()) << html_->TreeText();
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/b.xml"));
  EXPECT_EQ(Status(), "Getting information from server two.example.");
}

TEST_F(PackageBehindAManifest, StatusIsThatOfTheTransferUnderWay) {
  AskFor({"one.example/a.xml", "two.example/b.xml"});
  EXPECT_EQ(Status(), kStatus);
  events_.Message("/a.xml", "Total-Length", "4096");
  EXPECT_EQ(Status(), "Getting information from server one.example.");
  events_.Message("/a.xml", "Received", "1024");
  EXPECT_EQ(Status(), "Getting information from server one.example. Completed 1Kb of 4Kb");
  Finish("/a.xml");
  EXPECT_EQ(Status(), kStatus);
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  events_.Message("/sky.zip", "Total-Length", "2048");
  events_.Message("/sky.zip", "Received", "1024");
  EXPECT_EQ(Status(), "Downloading Sky Addon. Completed 1Kb of 2Kb");
  Finish("/sky.zip");
  EXPECT_EQ(Status(), "Getting information from server two.example.");
  Finish("/b.xml");
  EXPECT_EQ(Status(), "");
}

/// The user takes a while to read each message, and meanwhile something happens.
class SlowReader : public fakes::RecordingDesktop {
 public:
  explicit SlowReader(std::function<void()> meanwhile) : meanwhile_(std::move(meanwhile)) {}

  int ShowMessage(const std::string& text, const std::string& title, int style) override {
    meanwhile_();
    return RecordingDesktop::ShowMessage(text, title, style);
  }

 private:
  std::function<void()> meanwhile_;
};

TEST_F(PackageBehindAManifest, BarOfAPackageThatBeganDuringTheMessageStaysVisible) {
  AskFor({"one.example/a.xml"});
  SlowReader desktop([&] { events_.Message("/sky.zip", "Total-Length", "2048"); });
  TransferEvents events({log_, settings_, desktop, window_, categories_, buttons_, sources_,
                         exchange_.manifests, pending_packages_, requests_, packages_});
  events.Exception("/a.xml", "refused");
  EXPECT_TRUE(window_.progress_bar().visible());
  EXPECT_EQ(Status(), kStatus);
}

}  // namespace
}  // namespace kitbay::update
