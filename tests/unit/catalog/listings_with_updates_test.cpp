#include "catalog/installed_with_updates.h"
#include "catalog_fixture.h"
#include "installed_headings.h"
#include "recording_row_writer.h"
#include "recording_update_check.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListingWithUpdates : public CatalogTest {
 protected:
  ListingWithUpdates() {
    sources_.UpdateSources = {"updates.example/ovalink/components.xml", "mirror.example/news.xml"};
    shown_ = {.ids = {"old"}};
  }

  InstalledRows shown_;
  RecordingUpdateCheck check_{shown_};
  RecordingRowWriter rows_;
  InstalledWithUpdates installed_{log_, catalog_files_, settings_, sources_, check_, shown_, rows_};
};

TEST_F(ListingWithUpdates, AddonsAskEachSourceInOrderAndCarryTheRowNumberOn) {
  SetDatastore(
      RegistryText(Addon("chat", "Chat", "c.dll") + Addon("dice", "Dice", "d.dll"), "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(check_.calls, ElementsAre("AddAddonInfo components.xml [chat dice] 1 2",
                                        "AddAddonInfo news.xml [chat dice] 3 4"));
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListingWithUpdates, TransportsAskEachSourceInOrderAndCarryTheRowNumberOn) {
  SetDatastore(RegistryText("", Transport("mail", "Mail", "m.dll"), ""));
  installed_.InstalledTransports();
  EXPECT_THAT(check_.calls, ElementsAre("AddTransportInfo components.xml [mail] 1",
                                        "AddTransportInfo news.xml [mail] 2"));
  EXPECT_THAT(rows_.calls, IsEmpty());
}

TEST_F(ListingWithUpdates, ManifestIsWhatFollowsTheLastSlashOfTheSource) {
  sources_.UpdateSources = {"plain.xml", "a/b/c.xml", "host/", ""};
  SetDatastore(RegistryText(Addon("chat", "Chat", "c.dll"), "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(check_.calls,
              ElementsAre("AddAddonInfo plain.xml [chat] 1", "AddAddonInfo c.xml [chat] 2",
                          "AddAddonInfo  [chat] 3", "AddAddonInfo  [chat] 4"));
}

TEST_F(ListingWithUpdates, AddonsForgetTheRowsOfTheListingBefore) {
  SetDatastore(RegistryText(Addon("chat", "Chat", "c.dll"), "", ""));
  sources_.UpdateSources = {"a.xml"};
  installed_.InstalledAddons();
  ASSERT_EQ(check_.shown_at_call.size(), 1U);
  EXPECT_THAT(check_.shown_at_call[0].ids, IsEmpty());
  EXPECT_THAT(shown_.ids, ElementsAre("chat"));
}

TEST_F(ListingWithUpdates, EmptyContainerForgetsThePreviousRowsAndAsksNoSource) {
  SetDatastore(RegistryText("", "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(check_.calls, IsEmpty());
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(shown_.ids, IsEmpty());
}

TEST_F(ListingWithUpdates, MissingAddonContainerGivesTheStatusLineAndAsksNoSource) {
  SetDatastore("<root/>");
  installed_.InstalledAddons();
  EXPECT_THAT(rows_.calls, ElementsAre("FillDivStatus installedaddons|No Addon is installed."));
  EXPECT_THAT(check_.calls, IsEmpty());
}

TEST_F(ListingWithUpdates, MissingTransportContainerGivesTheLineWithASmallS) {
  SetDatastore("<root/>");
  installed_.InstalledTransports();
  EXPECT_THAT(rows_.calls,
              ElementsAre("FillDivStatus installedtransports|No Messaging service is installed."));
}

TEST_F(ListingWithUpdates, MissingChannelContainerGivesTheStatusLine) {
  SetDatastore("<root/>");
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre("FillDivStatus installedchannels|No Channel is installed."));
}

TEST_F(ListingWithUpdates, DatastoreThatDoesNotLoadChangesNothing) {
  SetCustomRegistry(RegistryText("", "", Channel("weather", "Weather", "4")));
  for (const char* datastore : {"", "<root>", "<root/><root/>"}) {
    SetDatastore(datastore);
    installed_.InstalledAddons();
    installed_.InstalledTransports();
    installed_.InstalledChannels();
  }
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(check_.calls, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(shown_.ids, ElementsAre("old"));
}

TEST_F(ListingWithUpdates, CustomAddonsAndTransportsUnderTheirRightPathsDoNotCount) {
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(
      RegistryText(Addon("chat", "Chat", "c.dll"), Transport("mail", "Mail", "m.dll"), ""));
  installed_.InstalledAddons();
  installed_.InstalledTransports();
  EXPECT_THAT(check_.calls, IsEmpty());
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/addonss//addon"), 0);
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/transport//transports"), 0);
}

TEST_F(ListingWithUpdates, CustomEntriesUnderTheOddPathsDoCount) {
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry("<root><addonss><addon/></addonss><transport><transports/></transport></root>");
  installed_.InstalledAddons();
  installed_.InstalledTransports();
  EXPECT_THAT(check_.calls,
              ElementsAre("AddAddonInfo components.xml []", "AddAddonInfo news.xml []",
                          "AddTransportInfo components.xml []", "AddTransportInfo news.xml []"));
}

TEST_F(ListingWithUpdates, CustomRegistryIsCountedBeforeTheDatastoreIsRead) {
  SetDatastore(RegistryText("", "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(files_.operations(), ElementsAre("Read C:\\User\\CustomData\\CustomRegistry.xml",
                                               "Read C:\\Suite\\Datastore\\olregistry.xml"));
}

TEST_F(ListingWithUpdates, FailureOfACheckEndsTheListingAndIsLogged) {
  SetDatastore(RegistryText(Addon("chat", "Chat", "c.dll"), "", ""));
  check_.fails = true;
  installed_.InstalledAddons();
  EXPECT_THAT(check_.calls, ElementsAre("AddAddonInfo components.xml [chat] 1"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::InstalledAddons", 9, "Subscript out of range")));
}

TEST_F(ListingWithUpdates, RowNumberPast32767OverflowsAcrossSources) {
  std::string transports;
  for (int i = 1; i <= 20000; ++i) {
    transports += "<transport id='t'/>";
  }
  SetDatastore(RegistryText("", transports, ""));
  installed_.InstalledTransports();
  EXPECT_EQ(check_.calls.size(), 1U);
  EXPECT_EQ(shown_.ids.size(), 32767U);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InstalledTransports", 6, "Overflow")));
}

TEST_F(ListingWithUpdates, ChannelsOfBothFilesAskEachSourceUnderOneHeading) {
  SetDatastore(RegistryText("", "", Channel("presence", "Presence", "1")));
  SetCustomRegistry(
      RegistryText("", "", Channel("news", "News", "2") + Channel("weather", "Weather", "3")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading));
  EXPECT_THAT(check_.calls,
              ElementsAre("AddInfo components.xml [presence] 1", "AddInfo news.xml [presence] 2",
                          "AddCustomInfo components.xml [news weather] 3 4",
                          "AddCustomInfo news.xml [news weather] 5 6"));
  EXPECT_THAT(check_.shown_at_call[0].ids, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListingWithUpdates, CustomChannelThatNoSourceShowedIsListedAfterAll) {
  SetDatastore(RegistryText("", "", Channel("presence", "Presence", "1")));
  SetCustomRegistry(RegistryText("", "", Channel("news", "News", "2")));
  check_.notes_ids = false;
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|2|About News|5|-"));
}

TEST_F(ListingWithUpdates, CustomChannelIsACoreOneOnlyWhenItsEntrySaysSo) {
  sources_.UpdateSources.clear();
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(RegistryText("", "",
                                 Channel("news", "News", "2", "1") +
                                     "<channel id='sky' name='Sky' version='3'>"
                                     "<description>About Sky</description></channel>"));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|2|About News|1|core",
                                       "fillDiv installedchannels|Sky|3|About Sky|2|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListingWithUpdates, CustomChannelsAreListedWhenThereIsNoSource) {
  sources_.UpdateSources.clear();
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(
      RegistryText("", "", Channel("news", "News", "2") + Channel("weather", "Weather", "3")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|2|About News|1|-",
                                       "fillDiv installedchannels|Weather|3|About Weather|2|-"));
}

TEST_F(ListingWithUpdates, CustomChannelsFollowTheStatusLineOfAMissingContainer) {
  sources_.UpdateSources.clear();
  SetDatastore("<root/>");
  SetCustomRegistry(RegistryText("", "", Channel("news", "News", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre("FillDivStatus installedchannels|No Channel is installed.",
                                       "fillDiv installedchannels|News|2|About News|1|-"));
}

TEST_F(ListingWithUpdates, ChannelOfAnEarlierListingDoesNotHideACustomOne) {
  sources_.UpdateSources.clear();
  shown_.ids = {"news"};
  SetDatastore("<root/>");
  SetCustomRegistry(RegistryText("", "", Channel("news", "News", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre("FillDivStatus installedchannels|No Channel is installed.",
                                       "fillDiv installedchannels|News|2|About News|1|-"));
}

TEST_F(ListingWithUpdates, IncompleteCustomChannelIsLoggedUnderItsOwnProcedure) {
  sources_.UpdateSources.clear();
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(
      RegistryText("", "", Channel("news", "News", "2") + "<channel id='x' name='X'/>"));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|2|About News|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ListCustomChannels", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(ListingWithUpdates, LengthCountsTheSelectedNodes) {
  SetCustomRegistry(RegistryText("", "", Channel("a", "A", "1") + Channel("b", "B", "2")));
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/channels//channel"), 2);
}

TEST_F(ListingWithUpdates, LengthOfAFileThatDoesNotLoadIsZero) {
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/channels//channel"), 0);
  SetCustomRegistry("<root><channels>");
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/channels//channel"), 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ListingWithUpdates, LengthIsA16BitNumber) {
  std::string channels;
  for (int i = 1; i <= 32767; ++i) {
    channels += "<channel/>";
  }
  SetCustomRegistry(RegistryText("", "", channels));
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/channels//channel"), 32767);
  EXPECT_THAT(log_.entries, IsEmpty());
  SetCustomRegistry(RegistryText("", "", channels + "<channel/>"));
  EXPECT_EQ(installed_.GetCustomAddonLength(kCustomRegistry, "root/channels//channel"), 0);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetCustomAddonLength", 6, "Overflow")));
}

}  // namespace
}  // namespace kitbay::catalog
