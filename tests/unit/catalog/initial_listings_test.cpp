#include "catalog/installed_components.h"
#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"
#include "installed_headings.h"
#include "recording_row_writer.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kTabBarCall =
    "AddImageTab imgtab|<span class='styleclass' style='background:gray;  width:100%; height:33px; "
    "position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' );'><img "
    "src='utrans.gif' id='trans' ><img src='uaddons.gif' id='addons' ></span>";

class InstalledListing : public CatalogTest {
 protected:
  std::vector<std::string> Addons(const std::string& datastore) {
    SetDatastore(datastore);
    installed_.InitialInstalledAddons();
    return rows_.calls;
  }
  std::vector<std::string> Transports(const std::string& datastore) {
    SetDatastore(datastore);
    installed_.InitialInstalledTransports();
    return rows_.calls;
  }
  std::vector<std::string> Channels(const std::string& datastore_channels,
                                    const std::string& custom_channels) {
    SetDatastore(RegistryText("", "", datastore_channels));
    SetCustomRegistry(RegistryText("", "", custom_channels));
    installed_.InitialInstalledChannels();
    return rows_.calls;
  }

  fakes::FakeVersionResource resources_;
  FileVersions versions_{log_, settings_, resources_};
  RecordingRowWriter rows_;
  InstalledComponents installed_{log_, catalog_files_, versions_, rows_};
};

TEST_F(InstalledListing, AddonsStandInDocumentOrderWithTheirVersions) {
  resources_.Add("C:\\Suite\\addons\\dice\\dice.dll", 1, 0, 4, 2);
  resources_.Add("C:\\Suite\\addons\\chat\\chat.dll", 3, 1, 0, 7);
  EXPECT_THAT(
      Addons(RegistryText(Addon("dice", "Dice", "dice.dll") +
                              Addon("chat", "Chat", "chat.dll", "1") +
                              Addon("b\u00FCcher", "B\u00FCcher", "buch.dll"),
                          Transport("mail", "Mail", "mail.dll"), "")),
      ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|Dice|1.0.4.2|About Dice|1|-",
                  "fillDiv installedaddons|Chat|3.1.0.7|About Chat|2|core",
                  "fillDiv installedaddons|B\u00FCcher|N/A|About B\u00FCcher|3|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, LibraryInInstallationFolderStillShowsItsVersion) {
  resources_.Add("C:\\Suite\\dice.dll", 2, 5, 0, 1);
  EXPECT_THAT(
      Addons(RegistryText(Addon("dice", "Dice", "dice.dll"), "", "")),
      ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|Dice|2.5.0.1|About Dice|1|-"));
}

TEST_F(InstalledListing, VersionPartFrom32768IsShownAsANegativeNumber) {
  resources_.Add("C:\\Suite\\mail.dll", 1, 2, 40000, 0);
  EXPECT_THAT(Transports(RegistryText("", Transport("mail", "Mail", "mail.dll"), "")),
              ElementsAre(kInstalledTransportHeading,
                          "fillDiv installedtransports|Mail|1.2.-25536.0|About Mail|1|-"));
}

TEST_F(InstalledListing, TransportsReadTheInstallationFolderOnly) {
  resources_.Add("C:\\Suite\\addons\\mail\\mail.dll", 9, 9, 9, 9);
  resources_.Add("C:\\Suite\\pager.dll", 1, 0, 0, 0);
  EXPECT_THAT(
      Transports(RegistryText(
          "",
          Transport("mail", "Mail", "mail.dll") + Transport("pager", "Pager", "pager.dll", "true"),
          "")),
      ElementsAre(kInstalledTransportHeading, "fillDiv installedtransports|Mail|N/A|About Mail|1|-",
                  "fillDiv installedtransports|Pager|1.0.0.0|About Pager|2|core"));
}

TEST_F(InstalledListing, CoreTextsDecideAboutTheRemoveButton) {
  EXPECT_THAT(
      Addons(RegistryText(Addon("a", "A", "a.dll", "1") + Addon("b", "B", "b.dll", "2") +
                              Addon("c", "C", "c.dll", "true") + Addon("d", "D", "d.dll", "0") +
                              Addon("e", "E", "e.dll", "01") + Addon("f", "F", "f.dll", ""),
                          "", "")),
      ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|A|N/A|About A|1|core",
                  "fillDiv installedaddons|B|N/A|About B|2|core",
                  "fillDiv installedaddons|C|N/A|About C|3|core",
                  "fillDiv installedaddons|D|N/A|About D|4|-",
                  "fillDiv installedaddons|E|N/A|About E|5|-",
                  "fillDiv installedaddons|F|N/A|About F|6|-"));
}

TEST_F(InstalledListing, EntriesAreFoundAtAnyDepthOfTheirContainer) {
  EXPECT_THAT(Addons("<root><addons><group>" + Addon("a", "A", "a.dll") + "</group>" +
                     Addon("b", "B", "b.dll") + "</addons></root>"),
              ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|A|N/A|About A|1|-",
                          "fillDiv installedaddons|B|N/A|About B|2|-"));
}

/// A datastore in which "#1" stands for an addon that is called 1, and the addons that are listed.
struct Placed {
  const char* name;
  std::string datastore;
  std::string addons;
};

class AddonPlaces : public InstalledListing, public testing::WithParamInterface<Placed> {};

TEST_P(AddonPlaces, DecideWhatIsListed) {
  std::string datastore = GetParam().datastore;
  for (std::size_t at = datastore.find('#'); at != std::string::npos; at = datastore.find('#')) {
    const std::string name(1, datastore[at + 1]);
    datastore.replace(at, 2, Addon(name, name, "x.dll"));
  }
  std::string listed;
  for (const std::string& call : Addons(datastore)) {
    const std::string row = "fillDiv installedaddons|";
    listed += call.starts_with(row) ? call.substr(row.size(), 1) : "";
  }
  EXPECT_EQ(listed, GetParam().addons);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, AddonPlaces,
    testing::Values(
        Placed{"NoList", "<root>#0</root>", ""},
        Placed{"AnotherDocument", "<components><addons>#0</addons></components>", ""},
        Placed{"AtAnyDepth", "<root><addons><a><b>#1</b></a>#2</addons></root>", "12"},
        Placed{"WithinAnEntry",
               "<root><addons><addon id='1' name='1'><filename/>#2<description/><core/></addon>#3"
               "</addons></root>",
               "123"},
        Placed{"SeveralLists",
               "<root><addons/><addons>#1</addons><x/><addons/><addons><y/>#2</addons></root>",
               "12"},
        Placed{"AListWithinAList", "<root><addons><addons>#1</addons>#2</addons></root>", "12"},
        Placed{"NotBesideOrAboveTheList",
               "<root>#0<addons>#1</addons><z><addons>#9</addons></z></root>", "1"},
        Placed{"NotInTheListOfAnotherKind",
               "<root><channels>#0</channels><addons>#1</addons></root>", "1"},
        Placed{"OtherLettersAndLongerNames",
               "<root><Addons>#0</Addons><addons><Addon/><addonx/><addo/>#1</addons></root>", "1"},
        Placed{"AmongTextsAndComments", "<root><addons>t<!--c-->#1u<?p?>#2</addons></root>", "12"}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(InstalledListing, NamesAreHandedOnAsTheyAreWritten) {
  EXPECT_THAT(
      Addons(RegistryText(
          "<addon id='x' name='&lt;script&gt;alert(1)&lt;/script&gt;'><filename>x.dll</filename>"
          "<description><![CDATA[<iframe src='a'></iframe>]]> &amp; more</description>"
          "<core>0</core></addon>",
          "", "")),
      ElementsAre(kInstalledAddonHeading,
                  "fillDiv installedaddons|<script>alert(1)</script>|N/A|"
                  "<iframe src='a'></iframe> & more|1|-"));
}

TEST_F(InstalledListing, EmptyAddonContainerWritesNothing) {
  EXPECT_THAT(Addons("<root><addons></addons></root>"), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, EmptyTransportContainerWritesNothing) {
  EXPECT_THAT(Transports("<root><transports/></root>"), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, MissingAddonContainerGivesTheStatusLine) {
  EXPECT_THAT(Addons("<root><transports/></root>"),
              ElementsAre("FillDivStatus installedaddons|No Addon is installed."));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, MissingTransportContainerGivesTheLineWithACapitalS) {
  EXPECT_THAT(Transports("<root><addons/></root>"),
              ElementsAre("FillDivStatus installedtransports|No Messaging Service is installed."));
}

TEST_F(InstalledListing, MissingChildTextIsLoggedAndRowsSoFarStay) {
  EXPECT_THAT(Addons(RegistryText(Addon("a", "A", "a.dll") +
                                      "<addon id='b' name='B'><filename>b.dll</filename>"
                                      "<core>0</core></addon>" +
                                      Addon("c", "C", "c.dll"),
                                  "", "")),
              ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|A|N/A|About A|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InitialInstalledAddons", 91,
                                              "Object variable or With block variable not set")));
}

class IncompleteEntry : public InstalledListing, public testing::WithParamInterface<const char*> {};

TEST_P(IncompleteEntry, IsError91OfTheAddonListing) {
  EXPECT_THAT(Addons(RegistryText(GetParam(), "", "")), ElementsAre(kInstalledAddonHeading));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InitialInstalledAddons", 91,
                                              "Object variable or With block variable not set")));
}

INSTANTIATE_TEST_SUITE_P(
    MissingParts, IncompleteEntry,
    testing::Values("<addon name='A'><filename/><description/><core/></addon>",
                    "<addon id='a'><filename/><description/><core/></addon>",
                    "<addon id='a' name='A'><description/><core/></addon>",
                    "<addon id='a' name='A'><filename/><core/></addon>",
                    "<addon id='a' name='A'><filename/><description/></addon>"));

TEST_F(InstalledListing, IncompleteTransportIsError91UnderItsOwnProcedure) {
  EXPECT_THAT(Transports(RegistryText("", "<transport id='a' name='A'/>", "")),
              ElementsAre(kInstalledTransportHeading));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InitialInstalledTransports", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(InstalledListing, MissingDatastoreIsLoggedByAddonsAndWritesNothing) {
  files_.AddFolder("C:\\Suite\\Datastore");
  installed_.InitialInstalledAddons();
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::InitialInstalledAddons", 53, "File not found")));
}

TEST_F(InstalledListing, MissingDatastoreFolderIsLoggedByTransportsAndWritesNothing) {
  installed_.InitialInstalledTransports();
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::InitialInstalledTransports", 76, "Path not found")));
}

TEST_F(InstalledListing, MalformedDatastoreIsLoggedWithThePlaceOfTheFault) {
  EXPECT_THAT(Addons("<root><addons></root>"), IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry(
                  "Kitbay::InitialInstalledAddons", kInvalidData,
                  "C:\\Suite\\Datastore\\olregistry.xml is not a well-formed document: Start-end "
                  "tags mismatch at byte 16")));
}

TEST_F(InstalledListing, RowPast32767IsALoggedOverflow) {
  std::string addons;
  for (int i = 1; i <= 32768; ++i) {
    addons += "<addon id='a' name='A'><filename/><description/><core/></addon>";
  }
  const auto calls = Addons(RegistryText(addons, "", ""));
  ASSERT_EQ(calls.size(), 1U + 32767U);
  EXPECT_EQ(calls.back(), "fillDiv installedaddons|A|N/A||32767|-");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InitialInstalledAddons", 6, "Overflow")));
}

TEST_F(InstalledListing, DatastoreIsReadAgainByEachListing) {
  Addons(RegistryText(Addon("a", "A", "a.dll"), "", ""));
  rows_.calls.clear();
  EXPECT_THAT(Addons(RegistryText(Addon("b", "B", "b.dll"), "", "")),
              ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|B|N/A|About B|1|-"));
}

TEST_F(InstalledListing, ChannelsOfTheDatastoreStandBeforeThoseOfTheCustomRegistry) {
  EXPECT_THAT(Channels(Channel("presence", "Presence", "1.2", "1"),
                       Channel("weather", "Weather", "4") + Channel("news", "News", "0.9")),
              ElementsAre(kTabBarCall, kInstalledChannelHeading,
                          "fillDiv installedchannels|Presence|1.2|About Presence|1|core",
                          "fillDiv installedchannels|Weather|4|About Weather|2|-",
                          "fillDiv installedchannels|News|0.9|About News|3|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, ChannelOfBothFilesAppearsOnceInWhateverCaseItsIdIsWritten) {
  EXPECT_THAT(Channels(Channel("Presence", "Presence", "1"),
                       Channel("pRESENCE", "Other", "2") + Channel("presence2", "Second", "3")),
              ElementsAre(kTabBarCall, kInstalledChannelHeading,
                          "fillDiv installedchannels|Presence|1|About Presence|1|-",
                          "fillDiv installedchannels|Second|3|About Second|2|-"));
}

TEST_F(InstalledListing, ChannelTwiceInOneFileAppearsOnce) {
  EXPECT_THAT(Channels(Channel("a", "First", "1") + Channel("A", "Second", "2"),
                       Channel("b", "Third", "3") + Channel("b", "Fourth", "4")),
              ElementsAre(kTabBarCall, kInstalledChannelHeading,
                          "fillDiv installedchannels|First|1|About First|1|-",
                          "fillDiv installedchannels|Third|3|About Third|2|-"));
}

TEST_F(InstalledListing, DeeperChannelsAreListedFromTheCustomRegistryOnly) {
  EXPECT_THAT(Channels("<x>" + Channel("a", "First", "1") + "</x>" + Channel("b", "Second", "2"),
                       "<x>" + Channel("c", "Third", "3") + "</x>"),
              ElementsAre(kTabBarCall, kInstalledChannelHeading,
                          "fillDiv installedchannels|Second|2|About Second|1|-",
                          "fillDiv installedchannels|Third|3|About Third|2|-"));
}

TEST_F(InstalledListing, NoChannelsLeaveTheHeadingAlone) {
  EXPECT_THAT(Channels("", ""), ElementsAre(kTabBarCall, kInstalledChannelHeading));
}

TEST_F(InstalledListing, MissingCustomRegistryIsNoFailure) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1")));
  installed_.InitialInstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kTabBarCall, kInstalledChannelHeading,
                                       "fillDiv installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, MalformedCustomRegistryIsNoFailure) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1")));
  SetCustomRegistry("<root><channels><channel id='b'");
  installed_.InitialInstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kTabBarCall, kInstalledChannelHeading,
                                       "fillDiv installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(InstalledListing, CustomRegistryIsTheSameFileInEitherSpelling) {
  SetDatastore(RegistryText("", "", ""));
  files_.AddFile("C:\\User\\CustomData\\CustomRegistry.xml",
                 RegistryText("", "", Channel("b", "B", "2")) + " ");
  installed_.InitialInstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kTabBarCall, kInstalledChannelHeading,
                                       "fillDiv installedchannels|B|2|About B|1|-"));
}

TEST_F(InstalledListing, MissingDatastoreLeavesTheTabBarAloneAndIsLoggedByChannels) {
  files_.AddFolder("C:\\Suite\\Datastore");
  SetCustomRegistry(RegistryText("", "", Channel("b", "B", "2")));
  installed_.InitialInstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kTabBarCall));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::InitialInstalledChannels", 53, "File not found")));
}

TEST_F(InstalledListing, IncompleteDatastoreChannelIsLoggedAndCustomChannelsFollow) {
  EXPECT_THAT(
      Channels(Channel("a", "A", "1") + "<channel id='b' name='B'/>" + Channel("c", "C", "3"),
               Channel("d", "D", "4")),
      ElementsAre(kTabBarCall, kInstalledChannelHeading,
                  "fillDiv installedchannels|A|1|About A|1|-",
                  "fillDiv installedchannels|D|4|About D|2|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddChannelList", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(InstalledListing, IncompleteCustomChannelIsLoggedUnderItsOwnProcedure) {
  EXPECT_THAT(Channels("", Channel("a", "A", "1") + "<channel name='B' version='2'/>"),
              ElementsAre(kTabBarCall, kInstalledChannelHeading,
                          "fillDiv installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddChannelListDirect", 91,
                                              "Object variable or With block variable not set")));
}

}  // namespace
}  // namespace kitbay::catalog
