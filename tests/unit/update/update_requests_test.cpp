#include "update/update_requests.h"

#include "exchange_fixture.h"

namespace kitbay::update {
namespace {

using base::ComponentKind;
using testing::ElementsAre;
using testing::IsEmpty;

class Requests : public ExchangeTest {
 protected:
  static constexpr const char* kChatZip = "C:\\Suite\\Temp\\chat.zip";

  void Offer(ComponentKind kind, const std::string& id, const std::string& name,
             const std::string& url) {
    new_components_[kind].push_back({.id = id, .name = name, .url = url});
  }
};

TEST_F(Requests, DocumentIsFourElementsWithoutARoot) {
  EXPECT_TRUE(requests_.Updates("updates.example", "/a/b.xml", "C:\\Suite\\Kitbay\\b.xml"));
  EXPECT_THAT(
      downloads_.documents,
      ElementsAre("<server>updates.example</server><filetodownload>/a/b.xml</filetodownload>"
                  "<destpath>C:\\Suite\\Kitbay\\b.xml</destpath>"
                  "<progressevents>true</progressevents>"));
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetValue 0"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Requests, ValuesAreSentUnescaped) {
  requests_.Updates("a&b<c>", "/<x>&amp;\"'", "C:\\<&>");
  EXPECT_THAT(downloads_.documents,
              ElementsAre("<server>a&b<c></server><filetodownload>/<x>&amp;\"'</filetodownload>"
                          "<destpath>C:\\<&></destpath><progressevents>true</progressevents>"));
}

TEST_F(Requests, MissingDownloadObjectIsError91) {
  requests_.SetDownloadObject(nullptr);
  EXPECT_FALSE(requests_.Updates("h", "/a", "C:\\a"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Updates", 91, kNotSet)));
  EXPECT_THAT(window_.calls().all(), IsEmpty());
}

TEST_F(Requests, RefusedRequestIsLoggedAndTheStatusTextStays) {
  downloads_.failure.emplace(static_cast<std::int32_t>(0x80004005), "Unspecified error");
  sources_.PendingSources = {"updates.example/a.xml"};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Updates", static_cast<int>(0x80004005),
                                              "Unspecified error")));
  EXPECT_EQ(Status(), "Getting information from server updates.example.");
  EXPECT_THAT(sources_.PendingSources, ElementsAre("updates.example/a.xml"));
}

TEST_F(Requests, PackageOfASigningSourceIsAwaitedAsItWasAnnounced) {
  Offer(ComponentKind::kAddon, "chat", "Chat", "p.example/chat.zip");
  new_components_.addon.back().digest = {.manifest = "m.xml", .size = "3", .sha256 = "ab"};
  EXPECT_TRUE(requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat")));
  EXPECT_THAT(downloads_.limits, ElementsAre(testing::Pair(0U, 3U)));
  ASSERT_TRUE(pending_packages_.addon.digest);
  EXPECT_EQ(pending_packages_.addon.digest->manifest, "m.xml");
  EXPECT_EQ(pending_packages_.addon.digest->sha256, "ab");
}

TEST_F(Requests, NothingPendingIsTrueAndLeavesTheWindowAlone) {
  window_.status_bar().SetPanelText(platform::kStatusPanel, "as before");
  window_.calls().Clear();
  EXPECT_TRUE(requests_.CheckPreferences());
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_EQ(Status(), "as before");
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Requests, FirstPendingSourceIsAskedAndStaysPending) {
  sources_.PendingSources = {"updates.example/v2/components.xml", "two.example/b.xml"};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("updates.example", "/v2/components.xml",
                                                        "C:\\Suite\\Kitbay\\components.xml")));
  EXPECT_THAT(sources_.PendingSources,
              ElementsAre("updates.example/v2/components.xml", "two.example/b.xml"));
  EXPECT_THAT(
      window_.calls().all(),
      ElementsAre("SetPanelText 2 Getting information from server updates.example.", "SetValue 0"));
}

TEST_F(Requests, SourceWithASchemeAsksTheSchemeForAPathOfTwoSlashes) {
  sources_.PendingSources = {"https://updates.example/a.xml"};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("https:", "//updates.example/a.xml",
                                                        "C:\\Suite\\Kitbay\\a.xml")));
  EXPECT_EQ(Status(), "Getting information from server https:.");
}

TEST_F(Requests, SourceWithoutASlashIsServerPathAndManifestInOne) {
  sources_.PendingSources = {"components.xml"};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("components.xml", "components.xml",
                                                        "C:\\Suite\\Kitbay\\components.xml")));
}

class UnusableSource : public Requests, public testing::WithParamInterface<const char*> {};

TEST_P(UnusableSource, IsDroppedWithALogEntryAndTheNextIsAsked) {
  const std::string source = GetParam();
  sources_.PendingSources = {source, "two.example/b.xml"};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(sources_.PendingSources, ElementsAre("two.example/b.xml"));
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_EQ(Status(), "Getting information from server two.example.");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckPreferences", 75,
                                              "Path/File access error: " +
                                                  source.substr(source.rfind('/') + 1))));
}

INSTANTIATE_TEST_SUITE_P(Names, UnusableSource,
                         testing::Values("h/", "h/..\\..\\evil.exe", "h/..", "h/.", "h/C:a.xml",
                                         "h/a.xml:stream", "h/nul", "h/CON.xml", "h/lpt1.xml",
                                         "h/a.xml.", "h/a?b=c", "h/a*.xml", "..\\evil.xml",
                                         "h/\\\\server\\share"));

// In the folder of manifests, only manifests may be replaced.
INSTANTIATE_TEST_SUITE_P(OtherFiles, UnusableSource,
                         testing::Values("www.h.org/DirectoryPreference.xml",
                                         "h/directorypreference.XML", "h/UpdatePreference.xml",
                                         "h/DIRECT~1.XML", "h/AddonUpdates.html", "h/Kitbay.exe",
                                         "h/version.dll", "h/install.txt", "h/iaddons.gif",
                                         "h/manifest", "h/a.xmlx", "h/a.xml.gif", "h/axml"));

class UsableSource : public Requests, public testing::WithParamInterface<const char*> {};

TEST_P(UsableSource, IsAsked) {
  sources_.PendingSources = {std::string("h/") + GetParam()};
  EXPECT_FALSE(requests_.CheckPreferences());
  EXPECT_THAT(downloads_.documents,
              ElementsAre(ManifestRequest("h", std::string("/") + GetParam())));
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Names, UsableSource,
                         testing::Values("a.xml", "A.XML", ".xml", "updates.com.xml",
                                         "two words.xml", "DirectoryPreference.xml.xml",
                                         "my-directorypreference.xml"));

TEST_F(Requests, OnlyUnusableSourcesLeaveNothingToAsk) {
  sources_.PendingSources = {"h/nul", "h/a:b"};
  EXPECT_TRUE(requests_.CheckPreferences());
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
  EXPECT_THAT(log_.entries, testing::SizeIs(2));
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_THAT(downloads_.documents, IsEmpty());
}

TEST_F(Requests, AddonIsDownloadedUnderItsIdAndShownUnderItsName) {
  Offer(ComponentKind::kAddon, "chat", "Chat Room", "packages.example/v1/chat-1.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat Room"));
  EXPECT_THAT(downloads_.documents,
              ElementsAre(Request("packages.example", "/v1/chat-1.zip", kChatZip)));
  EXPECT_EQ(Status(), "Downloading Chat Room Addon.");
  EXPECT_EQ(pending_packages_.addon.file_path, "/v1/chat-1.zip");
  EXPECT_EQ(pending_packages_.addon.name, "chat");
  EXPECT_EQ(pending_packages_.addon.row_id, "3");
  EXPECT_EQ(pending_packages_.addon.row_name, "Chat");
  EXPECT_EQ(pending_packages_.transport.name, "");
  EXPECT_EQ(pending_packages_.channel.name, "");
}

TEST_F(Requests, TransportHasNoLabel) {
  Offer(ComponentKind::kTransport, "chat", "Mail", "packages.example/mail.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kTransport, "Mail"));
  EXPECT_EQ(Status(), "Downloading Mail.");
  EXPECT_THAT(downloads_.documents,
              ElementsAre(Request("packages.example", "/mail.zip", kChatZip)));
  EXPECT_EQ(pending_packages_.transport.file_path, "/mail.zip");
  EXPECT_EQ(pending_packages_.transport.name, "chat");
  EXPECT_EQ(pending_packages_.addon.name, "");
}

TEST_F(Requests, ChannelHasTheLabelChannel) {
  Offer(ComponentKind::kChannel, "chat", "News", "packages.example/news.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kChannel, "News"));
  EXPECT_EQ(Status(), "Downloading News Channel.");
  EXPECT_THAT(downloads_.documents,
              ElementsAre(Request("packages.example", "/news.zip", kChatZip)));
  EXPECT_EQ(pending_packages_.channel.name, "chat");
}

TEST_F(Requests, ComponentOfAnotherKindIsNotMeant) {
  Offer(ComponentKind::kChannel, "chat", "News", "packages.example/news.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "News"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
}

TEST_F(Requests, FirstOfEqualNamesIsTakenWithoutLetterCase) {
  Offer(ComponentKind::kAddon, "other", "Notes", "packages.example/other.zip");
  Offer(ComponentKind::kAddon, "first", "CHAT", "packages.example/first.zip");
  Offer(ComponentKind::kAddon, "second", "Chat", "packages.example/second.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "chat"));
  EXPECT_THAT(downloads_.documents,
              ElementsAre(Request("packages.example", "/first.zip", "C:\\Suite\\Temp\\first.zip")));
  EXPECT_EQ(Status(), "Downloading CHAT Addon.");
}

TEST_F(Requests, UnknownNameHasNoEffect) {
  Offer(ComponentKind::kAddon, "chat", "Chat", "packages.example/chat.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chatter"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Requests, PackageUrlWithoutASlashIsServerAndPath) {
  Offer(ComponentKind::kAddon, "chat", "Chat", "chat.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat"));
  EXPECT_THAT(downloads_.documents, ElementsAre(Request("chat.zip", "chat.zip", kChatZip)));
}

class HostileId : public Requests, public testing::WithParamInterface<const char*> {};

TEST_P(HostileId, IsLoggedAndNothingIsSent) {
  Offer(ComponentKind::kAddon, GetParam(), "Chat", "packages.example/chat.zip");
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat"));
  EXPECT_THAT(downloads_.documents, IsEmpty());
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::DownloadAddon", 75,
                                std::string("Path/File access error: ") + GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Ids, HostileId,
                         testing::Values("..\\..\\Windows\\evil", "../evil", "C:\\evil", "a/b",
                                         "nul", "", "evil.", "a:b"));

TEST_F(Requests, PackageRequestThatIsRefusedIsLogged) {
  Offer(ComponentKind::kAddon, "chat", "Chat", "packages.example/chat.zip");
  downloads_.failure.emplace(base::RuntimeError::kInvalidProcedureCall);
  requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::Updates", 5, "Invalid procedure call or argument")));
  EXPECT_EQ(Status(), "Downloading Chat Addon.");
  EXPECT_EQ(pending_packages_.addon.name, "");
  EXPECT_EQ(pending_packages_.addon.row_id, "");
}

TEST_F(Requests, PackageThatWasNotAskedForIsNotPending) {
  Offer(ComponentKind::kAddon, "..\\evil", "Chat", "packages.example/chat.zip");
  EXPECT_FALSE(requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat")));
  EXPECT_EQ(pending_packages_.addon.name, "");
  EXPECT_FALSE(requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Unknown")));
}

TEST_F(Requests, PackageThatIsAskedForIsOnItsWay) {
  Offer(ComponentKind::kAddon, "chat", "Chat", "packages.example/chat.zip");
  EXPECT_TRUE(requests_.InstallNewAddons(InstallClick(ComponentKind::kAddon, "Chat")));
}

}  // namespace
}  // namespace kitbay::update
