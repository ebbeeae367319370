// What happens when the page has loaded.
#include "fake_program.h"

namespace kitbay::app {
namespace {

using fakes::FakeSuiteObjects;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PageLoaded : public FakeProgram {
 protected:
  /// Completes the page in a program that has been started.
  void LoadPage() {
    ASSERT_TRUE(Start());
    journal.Clear();
    window.events()->WebBrowser1_DocumentComplete();
  }
};

constexpr const char* kUserKey = "HKEY_CURRENT_USER\\software\\Ovalink";
constexpr const char* kFolders =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

TEST_F(PageLoaded, GoesThroughItsStepsInOrder) {
  LoadPage();
  const std::string user_key = kUserKey;
  const std::string folders = kFolders;
  EXPECT_THAT(
      CallsOf({"FitBrowser", "ConnectDocument", "Open", "Create", "Query", "SetText", "Close",
               "SetUp", "fso."}),
      ElementsAre("FitBrowser", "ConnectDocument", "Open " + user_key + " 0x3f",
                  "Create " + user_key + " 0x3f", "SetText " + user_key + " [] 7 Ovalink",
                  "Open " + folders + " 0x1", "Query " + folders + " [AppData] 0",
                  "Query " + folders + " [AppData] 7", "Close " + folders, "Close " + user_key,
                  "Create XMLRPCTRANSPORT.xTransport", "SetUp XMLRPCTRANSPORT.xTransport",
                  "Create URLDownloadLib.URLDownload", "SetUp URLDownloadLib.URLDownload",
                  "fso.FileExists C:\\Ana\\Ovalink\\updatepreference.xml",
                  "fso.CreateTextFile C:\\Ana\\Ovalink\\updatepreference.xml",
                  "fso.Write C:\\Ana\\Ovalink\\updatepreference.xml",
                  "fso.Close C:\\Ana\\Ovalink\\updatepreference.xml"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(PageLoaded, TheUsersDataLieInTheApplicationDataFolder) {
  LoadPage();
  EXPECT_EQ(settings.CustomDataFolder, "C:\\Ana\\Ovalink\\CustomData");
  EXPECT_THAT(keys.OpenKeys(), IsEmpty());
}

TEST_F(PageLoaded, AUserWithoutFoldersOfTheSuiteGetsThemAndSeesTheLists) {
  fakes::MemoryFileSystemObject(files).DeleteFolder("C:\\Ana\\Ovalink", true);
  LoadPage();
  EXPECT_TRUE(files.IsFolder("C:\\Ana\\Ovalink\\CustomData"));
  EXPECT_TRUE(files.IsFile("C:\\Ana\\Ovalink\\updatepreference.xml"));
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(Log(), Header());
}

TEST_F(PageLoaded, FoldersThatCannotBeMadeLeaveTheInstalledComponentsShown) {
  fakes::MemoryFileSystemObject(files).DeleteFolder("C:\\Ana\\Ovalink", true);
  files.SetUnwritable("C:\\Ana");
  LoadPage();
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::MakeUserFolders", "70", "Permission denied") +
                       Entry("Kitbay::MakeDirectoryPreferenceFile", "76", "Path not found") +
                       Entry("Kitbay::GetDirectoryPreferenceFile", "9", "Subscript out of range"));
}

TEST_F(PageLoaded, WithoutAnApplicationDataFolderNoFolderIsMadeOnTheDrive) {
  keys.AddText(kFolders, "AppData", "");
  LoadPage();
  EXPECT_FALSE(files.IsFolder("C:\\Ovalink\\CustomData"));
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
}

TEST_F(PageLoaded, LeftOversOfInterruptedSavesAreSweptFromWhereFilesAreReplaced) {
  const std::vector<std::string> folders = {"C:\\Ovalink\\Datastore", "C:\\Ovalink\\Kitbay",
                                            "C:\\Ana\\Ovalink\\CustomData", "C:\\Ana\\Ovalink"};
  for (const std::string& folder : folders) {
    files.AddFile(folder + "\\~kb12-1.tmp", "half");
    files.AddFile(folder + "\\~kept.tmp", "whole");
  }
  files.AddFile("C:\\Ana\\~kb12-1.tmp", "elsewhere");
  LoadPage();
  for (const std::string& folder : folders) {
    EXPECT_FALSE(files.IsFile(folder + "\\~kb12-1.tmp")) << folder;
    EXPECT_TRUE(files.IsFile(folder + "\\~kept.tmp")) << folder;
  }
  EXPECT_TRUE(files.IsFile("C:\\Ana\\~kb12-1.tmp"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(PageLoaded, WithoutAnInstallationNothingIsSweptFromTheRootOfTheDrive) {
  files.AddFile("C:\\Datastore\\~kb12-1.tmp", "elsewhere");
  ASSERT_TRUE(Start());
  settings.InstallFolder = "";
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_TRUE(files.IsFile("C:\\Datastore\\~kb12-1.tmp"));
}

TEST_F(PageLoaded, TheInstalledChannelsAreShownAndTheUpdatesAreOff) {
  LoadPage();
  ASSERT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(At("installedchannels")->ChildNode(1)->ChildNode(0)->ChildNode(0)->InnerHtml(), "News");
  EXPECT_TRUE(At("update")->Disabled());
  EXPECT_THAT(page.sources.UpdateSources, ElementsAre("updates.example/list.xml"));
}

TEST_F(PageLoaded, NothingIsSaidBehindListsThatShowSomething) {
  ASSERT_TRUE(Start());
  EXPECT_EQ(At("notice")->InnerText(), "Reading what is installed.");
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_EQ(At("notice")->InnerText(), "");
}

TEST_F(PageLoaded, AnotherDocumentModeIsLoggedOnce) {
  ASSERT_TRUE(Start());
  window.document()->set_document_mode(9);
  window.events()->WebBrowser1_DocumentComplete();
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::CheckDocumentMode", "5",
                                    "Invalid procedure call or argument: the page is shown in "
                                    "document mode 9"));
}

TEST_F(PageLoaded, APageThatCannotBeShownIsLogged) {
  ASSERT_TRUE(Start());
  window.events()->WebBrowser1_NavigateError();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::WebBrowser1_NavigateError", "53", "File not found"));
}

TEST_F(PageLoaded, TheTabsFollowTheLooksOfTheWindow) {
  window.looks = {.has_dark_colours = true, .dots_per_inch = 192};
  LoadPage();
  EXPECT_THAT(At("itabencloser")->Child(0)->Src(), EndsWith("/tabs/dark200/ichannels.gif"));
  window.looks = {};
  window.events()->LooksChanged();
  EXPECT_THAT(At("itabencloser")->Child(0)->Src(), EndsWith("Kitbay/ichannels.gif"));
}

TEST_F(PageLoaded, TheSuitesObjectsReportToTheTransferEvents) {
  LoadPage();
  EXPECT_EQ(suite_objects.Find(kTransport)->receiver, &program.exchange.transfer_events);
  EXPECT_EQ(suite_objects.Find(kDownload)->receiver, &program.exchange.transfer_events);
}

TEST_F(PageLoaded, TheDownloadObjectTakesTheRequests) {
  LoadPage();
  EXPECT_THAT(suite_objects.Find(kDownload)->requests,
              ElementsAre(AllOf(HasSubstr("<server>updates.example</server>"),
                                HasSubstr("<filetodownload>/list.xml</filetodownload>"))));
  EXPECT_THAT(suite_objects.Find(kTransport)->requests, IsEmpty());
}

TEST_F(PageLoaded, WithoutTheDownloadObjectARequestIsLogged) {
  suite_objects.missing.insert(kDownload);
  LoadPage();
  EXPECT_FALSE(program.exchange.requests.Updates("updates.example", "/list.xml", "C:\\list.xml"));
  EXPECT_THAT(Log(), HasSubstr(Entry("Kitbay::Updates", "91", kNotSet)));
}

TEST_F(PageLoaded, AnAnswerOfTheDownloadObjectMovesTheExchangeOn) {
  LoadPage();
  platform::OvTransportEvents* receiver = suite_objects.Find(kDownload)->receiver;
  receiver->Message("/list.xml", "Total-Length", "2048");
  EXPECT_TRUE(window.progress_bar().visible());
  files.AddFile("C:\\Ovalink\\Kitbay\\list.xml",
                fakes::ManifestText(base::ComponentKind::kChannel,
                                    fakes::OfferText(base::ComponentKind::kChannel,
                                                     {.id = "music", .name = "Music"})));
  receiver->Message("/list.xml", "Received-Length", "true");
  EXPECT_FALSE(window.progress_bar().visible());
  EXPECT_FALSE(At("update")->Disabled());
  EXPECT_EQ(At("updatedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(Log(), Header());
}

TEST_F(PageLoaded, AFailureOfTheTransportObjectReachesTheUser) {
  LoadPage();
  journal.Clear();
  suite_objects.Find(kTransport)->receiver->Exception("/list.xml", "connection timed out");
  EXPECT_THAT(CallsOf({"ShowMessage"}), ElementsAre(HasSubstr("connection timed out")));
}

TEST_F(PageLoaded, TheControlsOfThePageSwitchTheCategory) {
  files.AddFile("C:\\Ovalink\\Kitbay\\list.xml", "<components/>");
  LoadPage();
  suite_objects.Find(kDownload)->receiver->Message("/list.xml", "Received-Length", "true");
  ASSERT_TRUE(window.document()->Click(At("update")));
  EXPECT_EQ(At("updatedaddons")->InnerText(), "No additional modules are available right now.");
  EXPECT_EQ(At("imgtab")->Style("display"), "none");
  ASSERT_TRUE(window.document()->Click(At("installed")));
  EXPECT_EQ(At("imgtab")->Style("display"), "");
  EXPECT_EQ(At("installedchannels")->Style("display"), "");
  EXPECT_EQ(Log(), Header());
}

TEST_F(PageLoaded, ThePagesEventsReachTheView) {
  LoadPage();
  window.document()->Click(At("addons"));
  EXPECT_EQ(At("installedaddons")->Style("display"), "");
  EXPECT_EQ(At("installedchannels")->Style("display"), "none");
  EXPECT_FALSE(window.document()->StartDrag(At("trans")));
}

TEST_F(PageLoaded, APageThatCannotBeReachedEndsTheSequence) {
  window.calls().FailMember("ConnectDocument", base::Failure(-2147467259, "Unspecified error"));
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry(" Kitbay::WebBrowser1_DocumentComplete", "-2147467259",
                                    "Unspecified error"));
  EXPECT_THAT(CallsOf({"Create", "fso.FileExists"}), IsEmpty());
}

TEST_F(PageLoaded, ABrowserThatDoesNotFitEndsTheSequence) {
  window.calls().FailMember("FitBrowser", base::Failure(-2147467259, "Unspecified error"));
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry(" Kitbay::WebBrowser1_DocumentComplete", "-2147467259",
                                    "Unspecified error"));
  EXPECT_THAT(CallsOf({"ConnectDocument"}), IsEmpty());
}

TEST_F(PageLoaded, WithoutTheTransportObjectNeitherTheDownloadObjectNorTheListsFollow) {
  suite_objects.missing.insert(kTransport);
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::XMLRPCTRANSPORT.xTransport create object failed",
                                    "429", "ActiveX component can't create object"));
  EXPECT_THAT(
      CallsOf({"Create XML", "Create URL", "SetUp", "fso."}),
      ElementsAre("Create XMLRPCTRANSPORT.xTransport", "fso.WriteLine C:\\Ovalink\\KitbayLog.log",
                  "fso.WriteLine C:\\Ovalink\\KitbayLog.log",
                  "fso.WriteLine C:\\Ovalink\\KitbayLog.log",
                  "fso.WriteLine C:\\Ovalink\\KitbayLog.log"));
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
  EXPECT_EQ(At("imgtab")->InnerHtml(), "");
  EXPECT_EQ(At("notice")->InnerText(),
            "Kitbay cannot list anything: an object of the suite is missing or does not start. The "
            "error log says which.");
}

TEST_F(PageLoaded, WithoutADatastoreThePageSaysSo) {
  ASSERT_TRUE(Start());
  files.AddFile("C:\\Ovalink\\Datastore\\olregistry.xml", "no list");
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
  EXPECT_EQ(
      At("notice")->InnerText(),
      "Kitbay cannot read from the suite's datastore what is installed. The error log says why.");
}

TEST_F(PageLoaded, ATransportObjectThatCannotBeSetUpEndsTheSequence) {
  suite_objects.set_up_failures.emplace(kTransport, base::Failure(-2147024891, "Access denied."));
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::XMLRPCTRANSPORT.xTransport create object failed",
                                    "-2147024891", "Access denied."));
  EXPECT_EQ(suite_objects.Find(kDownload), nullptr);
}

TEST_F(PageLoaded, WithoutTheDownloadObjectNoListFollows) {
  suite_objects.missing.insert(kDownload);
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::OvGlobals.URLDownLoadProgID create object failed",
                                    "429", "ActiveX component can't create object"));
  EXPECT_EQ(suite_objects.Find(kTransport)->receiver, &program.exchange.transfer_events);
  EXPECT_THAT(CallsOf({"fso.FileExists"}), IsEmpty());
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
}

TEST_F(PageLoaded, ADownloadObjectThatCannotBeSetUpEndsTheSequence) {
  suite_objects.set_up_failures.emplace(kDownload, base::Failure(-2147024891, "Access denied."));
  LoadPage();
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::OvGlobals.URLDownLoadProgID create object failed",
                                    "-2147024891", "Access denied."));
  EXPECT_THAT(CallsOf({"fso.FileExists"}), IsEmpty());
}

TEST_F(PageLoaded, WithoutTheFileSystemObjectTheListsAreStillFilled) {
  suite_objects.missing.insert(kFileSystemObject);
  files.AddFile("C:\\Ana\\Ovalink\\updatepreference.xml",
                "<root><preferences><preference url='mine.example/list.xml'/></preferences>"
                "</root>");
  LoadPage();
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
}

TEST_F(PageLoaded, ADatastoreThatIsMissingIsLoggedAndTheListStaysEmpty) {
  fakes::MemoryFileSystemObject(files).DeleteFolder("C:\\Ovalink\\Datastore", true);
  LoadPage();
  EXPECT_THAT(Log(), HasSubstr("[Source:-  Kitbay::InitialInstalledChannels]\r\n"));
  EXPECT_EQ(At("installedchannels")->InnerHtml(), "");
  EXPECT_NE(At("itabencloser"), nullptr);
}

TEST_F(PageLoaded, AMissingListOnThePageIsLoggedWithItsTrailingBlank) {
  LoadPage();
  At("updatedchannels")->RemoveNode(true);
  window.document()->Click(At("channels"));
  EXPECT_EQ(Log(), Header() + Entry("Kitbay::ShowOnlyInstalled ", "91", kNotSet));
}

TEST_F(PageLoaded, OfASecondPageTheNewDownloadObjectTakesTheRequests) {
  LoadPage();
  const FakeSuiteObjects::Transport* first = suite_objects.Find(kDownload);
  const std::size_t asked = first->requests.size();
  window.Navigate("C:\\Ovalink\\Kitbay\\AddonUpdates.html");
  window.events()->WebBrowser1_DocumentComplete();
  ASSERT_NE(suite_objects.Find(kDownload), first);
  EXPECT_TRUE(program.exchange.requests.Updates("updates.example", "/other.xml", "C:\\other.xml"));
  EXPECT_EQ(first->requests.size(), asked);
  EXPECT_THAT(suite_objects.Find(kDownload)->requests.back(), HasSubstr("/other.xml"));
}

TEST_F(PageLoaded, ADownloadObjectOfASecondPageThatCannotBeSetUpTakesNoRequests) {
  LoadPage();
  suite_objects.set_up_failures.emplace(kDownload, base::Failure(-2147024891, "Access denied."));
  window.Navigate("C:\\Ovalink\\Kitbay\\AddonUpdates.html");
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_FALSE(program.exchange.requests.Updates("updates.example", "/other.xml", "C:\\other.xml"));
  EXPECT_THAT(suite_objects.Find(kDownload)->requests, IsEmpty());
}

TEST_F(PageLoaded, ASecondPageIsConnectedAgain) {
  LoadPage();
  window.Navigate("C:\\Ovalink\\Kitbay\\AddonUpdates.html");
  window.events()->WebBrowser1_DocumentComplete();
  EXPECT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(Count("SetUp XMLRPCTRANSPORT.xTransport"), 2);
  EXPECT_EQ(Count("SetUp URLDownloadLib.URLDownload"), 2);
  EXPECT_EQ(Log(), Header());
}

}  // namespace
}  // namespace kitbay::app
