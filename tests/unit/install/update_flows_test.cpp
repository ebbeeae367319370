// From the click on Update to the request for the package.
#include "install/update_flows.h"

#include <utility>

#include "fakes/signing_maker.h"
#include "flow_fixture.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr base::PerKind<const char*> kProcedures = {.addon = "Kitbay::UpdateInstalledAddon",
                                                    .transport = "Kitbay::UpdateInstalledTransport",
                                                    .channel = "Kitbay::UpdateInstalledChannel"};

class Update : public FlowTest {
 protected:
  Update() { sources_.UpdateSources = {"updates.example/suite/list.xml"}; }

  /// An entry of `kind`, with further elements.
  static std::string Offer(ComponentKind kind, const std::string& id, const std::string& url,
                           const std::string& more = "") {
    return fakes::OfferText(kind, {.id = id,
                                   .name = "Offered",
                                   .version = "2",
                                   .url = url,
                                   .more = "<filename>f.dll</filename>" + more});
  }

  /// Adds a manifest that only has such an entry.
  void AddOffer(ComponentKind kind, const std::string& id, const std::string& url,
                const std::string& more = "") {
    AddManifest(kind, Offer(kind, id, url, more));
  }

  /// Adds a manifest with those entries of `kind`.
  void AddManifest(ComponentKind kind, const std::string& entries,
                   const std::string& name = "list.xml") {
    files_.AddFile("C:\\Ovalink\\Kitbay\\" + name, fakes::ManifestText(kind, entries));
  }

  /// Clicks Update in the row at that position.
  void Press(ComponentKind kind, int place = 0) {
    const view::Click click = ClickOn(kind, place, kUpdate);
    clicked_ = click.button;
    flows_.UpdateInstalled(click);
  }

  /// A row of `kind` for "notes", and a manifest that offers it at `url`.
  void Prepare(ComponentKind kind, const std::string& url = "http://p.example/a/notes-2.zip") {
    AddInstalled(kind, "Notes", 4);
    AddOffer(kind, "notes", url);
  }

  static std::string Request(const std::string& server, const std::string& path,
                             const std::string& name) {
    return "<server>" + server + "</server><filetodownload>" + path +
           "</filetodownload><destpath>C:\\Ovalink\\Temp\\" + name +
           ".zip</destpath><progressevents>true</progressevents>";
  }

  bool NothingIsDownloaded() const {
    return downloads_.documents.empty() && pending_packages_.addon.name.empty() &&
           pending_packages_.transport.name.empty() && pending_packages_.channel.name.empty();
  }

  platform::HtmlNodeRef clicked_;
  UpdateFlows flows_{{log_, settings_, catalog_files_, window_, page_, state_, buttons_, sources_,
                      requests_, pending_packages_, main_client_, session_}};
};

class UpdateOfEachKind : public Update, public ::testing::WithParamInterface<ComponentKind> {};

std::string KindName(const ::testing::TestParamInfo<ComponentKind>& info) {
  return fakes::kManifestElements[info.param];
}

INSTANTIATE_TEST_SUITE_P(Kinds, UpdateOfEachKind, ::testing::ValuesIn(base::kComponentKinds),
                         KindName);

TEST_P(UpdateOfEachKind, AsksForThePackageOfTheId) {
  Prepare(GetParam());
  Press(GetParam());
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("p.example", "a/notes-2.zip", "notes")));
  const update::PendingPackage& pending = pending_packages_[GetParam()];
  EXPECT_EQ(pending.file_path, "a/notes-2.zip");
  EXPECT_EQ(pending.name, "notes");
  EXPECT_EQ(pending.row_id, "4");
  EXPECT_EQ(pending.row_name, "Notes");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(UpdateOfEachKind, RemembersWhatASigningSourceSaysOfThePackage) {
  const fakes::SigningMaker maker(1);
  AddInstalled(GetParam(), "Notes", 4);
  AddOffer(GetParam(), "notes", "p.example/n.zip", "<size>12</size><sha256>AB</sha256>");
  Press(GetParam());
  EXPECT_FALSE(pending_packages_[GetParam()].digest);
  EXPECT_THAT(downloads_.limits, IsEmpty());

  const std::string manifest = "C:\\Ovalink\\Kitbay\\list.xml";
  sources_.keys["list.xml"] = {.key = maker.key()};
  files_.AddFile(manifest, maker.Sign(*files_.Bytes(manifest), 1,
                                      std::chrono::sys_days(std::chrono::days(30000))));
  Press(GetParam());
  EXPECT_THAT(downloads_.limits, ElementsAre(::testing::Pair(1U, 12U)));
  ASSERT_TRUE(pending_packages_[GetParam()].digest);
  EXPECT_EQ(pending_packages_[GetParam()].digest->manifest, "list.xml");
  EXPECT_EQ(pending_packages_[GetParam()].digest->size, "12");
  EXPECT_EQ(pending_packages_[GetParam()].digest->sha256, "ab");
}

TEST_P(UpdateOfEachKind, AsksForNothingWhereTheManifestOfASigningSourceWasChanged) {
  sources_.keys["list.xml"] = {.key = fakes::SigningMaker(1).key()};
  Prepare(GetParam());
  Press(GetParam());
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::CheckSignature", -2146893818, "list.xml is not signed")));
}

TEST_P(UpdateOfEachKind, NamesTheComponentInTheStatusBar) {
  constexpr base::PerKind<const char*> kTexts = {.addon = "Downloading Notes addon.",
                                                 .transport = "Downloading Notes",
                                                 .channel = "Downloading Notes Channel."};
  Prepare(GetParam());
  Press(GetParam());
  EXPECT_EQ(Status(), kTexts[GetParam()]);
}

TEST_P(UpdateOfEachKind, AsksBeforeItClosesARunningClient) {
  constexpr base::PerKind<const char*> kNames = {
      .addon = "Notes Addon", .transport = "Notes ", .channel = "Notes Channel"};
  StartClient();
  Prepare(GetParam());
  Press(GetParam());
  EXPECT_THAT(desktop_.calls(),
              ElementsAre(kFindClient,
                          std::string("ShowMessage [To Update ") + kNames[GetParam()] +
                              " Tessel Messenger needs to be shut down. Tessel Messenger will "
                              "restart after changes take effect.] [Kitbay] 1",
                          CloseClient()));
  EXPECT_TRUE(session_.restart);
}

TEST_P(UpdateOfEachKind, WithoutARunningClientItStartsWithoutAQuestionAndLeavesARestart) {
  Prepare(GetParam());
  Press(GetParam());
  EXPECT_THAT(desktop_.calls(), ElementsAre(kFindClient));
  EXPECT_TRUE(session_.restart);
  EXPECT_TRUE(state_.update_in_progress);
  EXPECT_EQ(downloads_.documents.size(), 1U);
}

TEST_P(UpdateOfEachKind, CancelChangesNothing) {
  StartClient();
  Prepare(GetParam());
  desktop_.AddAnswer(platform::kAnswerCancel);
  Press(GetParam());
  EXPECT_FALSE(clicked_->Disabled());
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_FALSE(session_.restart);
  EXPECT_FALSE(state_.update_in_progress);
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_TRUE(desktop_.HasWindow(client_window_));
  EXPECT_EQ(Status(), "");
}

TEST_P(UpdateOfEachKind, CancelLeavesAnEarlierRestartFlagAsItWas) {
  StartClient();
  Prepare(GetParam());
  session_.restart = true;
  state_.update_in_progress = true;
  desktop_.AddAnswer(platform::kAnswerCancel);
  Press(GetParam());
  EXPECT_TRUE(session_.restart);
  EXPECT_TRUE(state_.update_in_progress);
}

TEST_P(UpdateOfEachKind, AnIdInNoManifestDownloadsNothingAndLeavesTheClickedButtonOff) {
  Prepare(GetParam());
  AddInstalled(GetParam(), "Other", 5);
  Press(GetParam(), 1);
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_TRUE(clicked_->Disabled());
  EXPECT_FALSE(Button(view::kInstalledContainers[GetParam()], 0, kUpdate)->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_TRUE(session_.restart);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(UpdateOfEachKind, ARowWithoutVersionIsAnError) {
  Prepare(GetParam());
  Row(view::kInstalledContainers[GetParam()])->Child(0)->SetInnerText("Notes");
  Press(GetParam());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry(kProcedures[GetParam()], 5, "Invalid procedure call or argument")));
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_FALSE(clicked_->Disabled());
}

TEST_P(UpdateOfEachKind, TheKindsOfAManifestAreNotMixed) {
  AddInstalled(GetParam(), "Notes", 4);
  for (const ComponentKind kind : base::kComponentKinds) {
    if (kind != GetParam()) {
      AddOffer(kind, "notes", "http://p.example/notes.zip");
      Press(GetParam());
    }
  }
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_P(UpdateOfEachKind, AnOfferThatLacksATextIsLogged) {
  constexpr base::PerKind<const char*> kLoggers = {.addon = "Kitbay::UpdateInstalledAddon",
                                                   .transport = "Kitbay::UpdateInstalledTransport",
                                                   .channel = "Kitbay::GetChannelInfo"};
  AddInstalled(GetParam(), "Notes", 4);
  const std::string description = "<description>d</description>";
  std::string offer = Offer(GetParam(), "notes", "p.example/n.zip");
  AddManifest(GetParam(), offer.erase(offer.find(description), description.size()));
  Press(GetParam());
  EXPECT_THAT(log_.entries, ElementsAre(Entry(kLoggers[GetParam()], 91, kNotSet)));
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_F(Update, OnlyATransportNeedsAFileName) {
  for (const ComponentKind kind : base::kComponentKinds) {
    AddInstalled(kind, "Notes", 4);
    AddManifest(kind,
                fakes::OfferText(kind, {.id = "notes", .name = "N", .url = "p.example/n.zip"}));
    Press(kind);
  }
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdateInstalledTransport", 91, kNotSet)));
  EXPECT_EQ(pending_packages_.addon.name, "notes");
  EXPECT_EQ(pending_packages_.transport.name, "");
  EXPECT_EQ(pending_packages_.channel.name, "notes");
}

TEST_F(Update, TheNameOfTheRowIsComparedWithTheIdWithoutLetterCase) {
  AddInstalled(ComponentKind::kAddon, "NOTES", 1);
  AddOffer(ComponentKind::kAddon, "Notes", "http://p.example/n.zip");
  Press(ComponentKind::kAddon);
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("p.example", "n.zip", "Notes")));
  EXPECT_EQ(Status(), "Downloading NOTES addon.");
}

TEST_F(Update, TheNameOfTheRowIsNotComparedWithTheManifestsName) {
  AddInstalled(ComponentKind::kAddon, "Offered", 1);
  AddOffer(ComponentKind::kAddon, "notes", "http://p.example/n.zip");
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_F(Update, TheFirstEntryOfTheIdCounts) {
  AddInstalled(ComponentKind::kChannel, "Notes", 1);
  AddManifest(ComponentKind::kChannel,
              Offer(ComponentKind::kChannel, "other", "http://p.example/0.zip") +
                  Offer(ComponentKind::kChannel, "notes", "http://p.example/1.zip") +
                  Offer(ComponentKind::kChannel, "notes", "http://p.example/2.zip"));
  Press(ComponentKind::kChannel);
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("p.example", "1.zip", "notes")));
}

TEST_F(Update, TheNameEndsBeforeTheFirstVersion) {
  AddInstalled(ComponentKind::kAddon, "NotesVersion", 1);
  AddOffer(ComponentKind::kAddon, "notes", "http://p.example/n.zip");
  Press(ComponentKind::kAddon);
  EXPECT_EQ(session_.component_name, "Notes");
  EXPECT_EQ(pending_packages_.addon.name, "notes");
}

TEST_F(Update, ATrailingBlankStaysPartOfTheName) {
  StartClient();
  AddInstalled(ComponentKind::kAddon, "Notes ", 1);
  AddOffer(ComponentKind::kAddon, "notes", "http://p.example/n.zip");
  Press(ComponentKind::kAddon);
  EXPECT_EQ(session_.component_name, "Notes ");
  EXPECT_THAT(desktop_.calls()[1], ::testing::HasSubstr("[To Update Notes  Addon Tessel"));
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_F(Update, TheClickedRowBecomesTheCurrentOne) {
  AddInstalled(ComponentKind::kTransport, "Mail", 7);
  AddInstalled(ComponentKind::kTransport, "Notes", 8);
  Press(ComponentKind::kTransport, 1);
  EXPECT_EQ(state_.current_row_id, "8");
  EXPECT_EQ(session_.component_name, "Notes");
}

TEST_F(Update, TheOtherButtonsOfThePageAreOffMeanwhile) {
  Prepare(ComponentKind::kAddon);
  AddInstalled(ComponentKind::kChannel, "News", 1);
  AddNew(ComponentKind::kTransport, "Mail", 1);
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(clicked_->Disabled());
  EXPECT_TRUE(Button("installedchannels", 0, kUpdate)->Disabled());
  EXPECT_TRUE(Button("updatedtransports", 0, 0)->Disabled());
  EXPECT_TRUE(state_.download_in_progress);
}

TEST_F(Update, OnlyTheFirstSourceIsAsked) {
  sources_.UpdateSources = {"updates.example/empty.xml", "updates.example/list.xml"};
  Prepare(ComponentKind::kAddon);
  AddManifest(ComponentKind::kAddon, "", "empty.xml");
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(NothingIsDownloaded());
  sources_.UpdateSources = {"updates.example/list.xml", "updates.example/empty.xml"};
  Press(ComponentKind::kAddon);
  EXPECT_EQ(downloads_.documents.size(), 1U);
}

TEST_F(Update, WithoutASourceThereIsNothingToAsk) {
  Prepare(ComponentKind::kAddon);
  sources_.UpdateSources.clear();
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::UpdateInstalledAddon", 9, "Subscript out of range")));
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_F(Update, AManifestThatDoesNotLoadIsPassedOver) {
  Prepare(ComponentKind::kAddon);
  files_.AddFile("C:\\Ovalink\\Kitbay\\list.xml", "<html><br></html>");
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_TRUE(clicked_->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Update, AManifestIsOnlyLookedForInItsFolder) {
  Prepare(ComponentKind::kAddon);
  sources_.UpdateSources = {"updates.example/..\\Kitbay\\list.xml"};
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_THAT(files_.operations(), IsEmpty());
}

struct Url {
  const char* name;
  const char* url;
  const char* server;
  const char* path;
};

class UpdateUrl : public Update, public ::testing::WithParamInterface<Url> {};

INSTANTIATE_TEST_SUITE_P(
    Forms, UpdateUrl,
    ::testing::Values(
        Url{"WithAScheme", "https://p.example/a.zip", "p.example", "a.zip"},
        Url{"WithAPort", "http://127.0.0.1:8080/a/b/c.zip", "127.0.0.1:8080", "a/b/c.zip"},
        Url{"WithoutAScheme", "p.example/a/b.zip", "p.example", "a/b.zip"},
        Url{"WithAQuery", "http://p.example/get?f=a.zip", "p.example", "get?f=a.zip"},
        Url{"WithADoubleSlash", "http://p.example/a//b.zip", "p.example", "a//b.zip"}),
    [](const auto& info) { return info.param.name; });

TEST_P(UpdateUrl, IsTakenApart) {
  Prepare(ComponentKind::kAddon, GetParam().url);
  Press(ComponentKind::kAddon);
  EXPECT_THAT(downloads_.documents,
              ElementsAre(Request(GetParam().server, GetParam().path, "notes")));
}

class ShortUrl : public Update, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Forms, ShortUrl,
                         ::testing::Values("", "p.example", "http:", "http://",
                                           "http://p.example"));

TEST_P(ShortUrl, IsASubscriptError) {
  Prepare(ComponentKind::kAddon, GetParam());
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::UpdateInstalledAddon", 9, "Subscript out of range")));
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_FALSE(state_.download_in_progress);
}

TEST_F(Update, AnIdThatIsNoFileNameIsRefused) {
  AddInstalled(ComponentKind::kChannel, "..\\Notes", 1);
  AddOffer(ComponentKind::kChannel, "..\\notes", "http://p.example/n.zip");
  Press(ComponentKind::kChannel);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdateInstalledChannel", 75,
                                              "Path/File access error: ..\\notes")));
  EXPECT_TRUE(NothingIsDownloaded());
}

TEST_F(Update, ARefusedRequestGivesTheButtonsBack) {
  Prepare(ComponentKind::kAddon);
  AddNew(ComponentKind::kChannel, "News", 1);
  downloads_.failure = base::Failure(-2147467259, "Unspecified error");
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::Updates", -2147467259, "Unspecified error")));
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_FALSE(clicked_->Disabled());
  EXPECT_FALSE(Button("updatedchannels", 0, 0)->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
  EXPECT_EQ(Status(), "Downloading Notes addon.");
}

TEST_P(UpdateOfEachKind, AnAnswerWithinTheRequestFindsThePackageAndGivesTheButtonsBackForGood) {
  Prepare(GetParam());
  update::PendingPackage found;
  downloads_.while_asked = [&] {
    found = std::exchange(pending_packages_[GetParam()], {});
    buttons_.EnableOtherDownload();
    buttons_.EnableOtherUpdatedDownload();
  };
  Press(GetParam());
  EXPECT_EQ(found.file_path, "a/notes-2.zip");
  EXPECT_EQ(found.name, "notes");
  EXPECT_EQ(found.row_id, "4");
  EXPECT_EQ(pending_packages_[GetParam()].name, "");
  EXPECT_FALSE(clicked_->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
}

TEST_F(Update, AFailureOnceTheButtonsAreOffGivesThemBack) {
  Prepare(ComponentKind::kAddon);
  window_.calls().FailMember("SetPanelText", base::Failure(438, "no such member"));
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::UpdateInstalledAddon", 438, "no such member")));
  EXPECT_TRUE(NothingIsDownloaded());
  EXPECT_FALSE(clicked_->Disabled());
  EXPECT_FALSE(state_.download_in_progress);
}

}  // namespace
}  // namespace kitbay::install
