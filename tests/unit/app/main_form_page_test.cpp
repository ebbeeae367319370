// What follows when the page has loaded.
#include "fake_program.h"

namespace kitbay::app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PageLoaded : public FakeProgram {
 protected:
  /// Lets the page load in a program that has started.
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

TEST_F(PageLoaded, TheInstalledChannelsAreShownAndTheUpdatesAreOff) {
  LoadPage();
  ASSERT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(At("installedchannels")->ChildNode(1)->ChildNode(0)->ChildNode(0)->InnerHtml(), "News");
  EXPECT_TRUE(At("update")->Disabled());
  EXPECT_THAT(sources.UpdateSources, ElementsAre("updates.example/list.xml"));
}

TEST_F(PageLoaded, TheSuitesObjectsReportToTheTransferEvents) {
  LoadPage();
  EXPECT_EQ(suite_objects.Find(kTransport)->receiver, &transfer_events);
  EXPECT_EQ(suite_objects.Find(kDownload)->receiver, &transfer_events);
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
  EXPECT_EQ(suite_objects.Find(kTransport)->receiver, &transfer_events);
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

TEST_F(PageLoaded, WithoutTheFileSystemObjectTheListsFollowAllTheSame) {
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

TEST_F(PageLoaded, ASecondPageIsConnectedAnew) {
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
