#include "catalog/available_updates.h"

#include "installed_headings.h"
#include "manifest_fixture.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The installed lists as the program writes them, with the listing that asks each source.
class Updates : public ManifestTest {
 protected:
  Updates() { sources_.UpdateSources = {"one.example/a.xml"}; }

  AvailableUpdates available_{log_, catalog_files_, versions_, shown_, rows_};
  InstalledWithUpdates installed_{log_,       catalog_files_, settings_, sources_,
                                  available_, shown_,         rows_};
};

TEST_F(Updates, NewerAddonGetsAnUpdateRow) {
  SetDatastore(
      RegistryText(Addon("chat", "Chat", "c.dll") + Addon("dice", "Dice", "d.dll"), "", ""));
  resources_.Add("C:\\Suite\\addons\\chat\\c.dll", 1, 0, 0, 9);
  resources_.Add("C:\\Suite\\d.dll", 1, 0, 0, 9);
  SetManifest("a.xml", ManifestText(Offer("addon", "chat", "Chat", "0.0.0.10") +
                                        Offer("addon", "dice", "Dice", "1.0.1.0"),
                                    "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledAddonHeading,
                          "fillDivWithUpdates installedaddons|Chat|1.0.0.9|About Chat|1|-",
                          "fillDiv installedaddons|Dice|1.0.0.9|About Dice|2|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Updates, AListIsAnsweredOnceASourceKnowsItsKind) {
  SetDatastore(RegistryText(Addon("chat", "Chat", "c.dll"), "", ""));
  EXPECT_FALSE(installed_.InstalledAddons());
  SetManifest("a.xml", ManifestText("", "", ""));
  EXPECT_TRUE(installed_.InstalledAddons());
}

TEST_F(Updates, NewerTransportGetsAnUpdateRow) {
  SetDatastore(RegistryText("", Transport("mail", "Mail", "m.dll"), ""));
  resources_.Add("C:\\Suite\\m.dll", 2, 0, 0, 0);
  SetManifest("a.xml", ManifestText("", Offer("transport", "mail", "Mail", "1.0.0.1"), ""));
  installed_.InstalledTransports();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledTransportHeading,
                          "fillDivWithUpdates installedtransports|Mail|2.0.0.0|About Mail|1|-"));
}

TEST_F(Updates, ChannelsCompareTheVersionOfTheirEntry) {
  SetDatastore(RegistryText("", "", Channel("news", "News", "1.0.0.9")));
  SetCustomRegistry(RegistryText("", "", Channel("sky", "Sky", "3")));
  SetManifest("a.xml", ManifestText("", "",
                                    Offer("channel", "news", "News", "0.0.0.10") +
                                        Offer("channel", "sky", "Sky", "3")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading,
                          "fillDivWithUpdates installedchannels|News|1.0.0.9|About News|1|-",
                          "fillDiv installedchannels|Sky|3|About Sky|2|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Updates, CustomChannelWithANewerOfferGetsAnUpdateRow) {
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(RegistryText("", "", Channel("sky", "Sky", "3")));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "sky", "Sky", "4")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDivWithUpdates installedchannels|Sky|3|About Sky|1|-"));
}

TEST_F(Updates, CoreComponentWithAnUpdateHasTheUpdateButtonAlone) {
  SetDatastore(RegistryText("", "",
                            Channel("news", "News", "1", "1") + Channel("sky", "Sky", "1", "0") +
                                Channel("old", "Old", "9", "1")));
  SetManifest("a.xml", ManifestText("", "",
                                    Offer("channel", "news", "News", "2") +
                                        Offer("channel", "sky", "Sky", "2") +
                                        Offer("channel", "old", "Old", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading,
                          "fillDivWithUpdates installedchannels|News|1|About News|1|core",
                          "fillDivWithUpdates installedchannels|Sky|1|About Sky|2|-",
                          "fillDiv installedchannels|Old|9|About Old|3|core"));
}

TEST_F(Updates, FirstEntryOfAnIdInDocumentOrderCounts) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "5") + Channel("b", "B", "5")));
  SetManifest("a.xml",
              ManifestText("", "",
                           Offer("channel", "a", "A", "6") + Offer("channel", "a", "A", "4") +
                               "<group>" + Offer("channel", "b", "B", "4") + "</group>" +
                               Offer("channel", "b", "B", "6")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDivWithUpdates installedchannels|A|5|About A|1|-",
                                       "fillDiv installedchannels|B|5|About B|2|-"));
}

TEST_F(Updates, IdsAreComparedLetterForLetter) {
  SetDatastore(RegistryText("", "", Channel("Chat", "Chat", "1") + Channel("Chat ", "Blank", "1")));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "chat", "chat", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|Chat|1|About Chat|1|-",
                                       "fillDiv installedchannels|Blank|1|About Blank|2|-"));
}

TEST_F(Updates, FewerOfferedPartsEndTheRowsOfThatSource) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetDatastore(RegistryText(
      "", "", Channel("a", "A", "1") + Channel("b", "B", "1.0.0.0") + Channel("c", "C", "1")));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "b", "B", "1.1")));
  SetManifest("b.xml", ManifestText("", "", ""));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|A|1|About A|1|-",
                          "fillDiv installedchannels|A|1|About A|2|-",
                          "fillDiv installedchannels|B|1.0.0.0|About B|3|-",
                          "fillDiv installedchannels|C|1|About C|4|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 9, kSubscript)));
}

TEST_F(Updates, SubscriptErrorIsLoggedUnderTheProcedureOfItsKind) {
  SetDatastore(RegistryText(Addon("a", "A", "a.dll"), Transport("t", "T", "t.dll"),
                            Channel("c", "C", "1.0")));
  SetCustomRegistry(RegistryText("", "", Channel("d", "D", "1.0")));
  resources_.Add("C:\\Suite\\a.dll", 1, 0, 0, 0);
  resources_.Add("C:\\Suite\\t.dll", 1, 0, 0, 0);
  SetManifest("a.xml",
              ManifestText(Offer("addon", "a", "A", "1.1"), Offer("transport", "t", "T", "1.1"),
                           Offer("channel", "c", "C", "1") + Offer("channel", "d", "D", "1")));
  installed_.InstalledAddons();
  installed_.InstalledTransports();
  installed_.InstalledChannels();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddAddonInfo", 9, kSubscript),
                                        Entry("Kitbay::AddTransportInfo", 9, kSubscript),
                                        Entry("Kitbay::AddInfo", 9, kSubscript),
                                        Entry("Kitbay::AddCustomInfo", 9, kSubscript)));
}

TEST_F(Updates, UnreadableVersionComparesTheFirstOfferedPartWithZero) {
  SetDatastore(RegistryText(Addon("a", "A", "a.dll") + Addon("b", "B", "b.dll"), "", ""));
  SetManifest("a.xml", ManifestText(Offer("addon", "a", "A", "1.0.0.0") +
                                        Offer("addon", "b", "B", "0.9.9.9"),
                                    "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledAddonHeading,
                                       "fillDivWithUpdates installedaddons|A|N/A|About A|1|-",
                                       "fillDiv installedaddons|B|N/A|About B|2|-"));
}

TEST_F(Updates, EachSourceWritesTheHeadingOfAddonsAndTransportsAgain) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetDatastore(RegistryText(Addon("a", "A", "a.dll"), Transport("t", "T", "t.dll"), ""));
  SetManifest("a.xml", ManifestText(Offer("addon", "a", "A", "1"), "", ""));
  SetManifest("b.xml", ManifestText("", Offer("transport", "t", "T", "1"), ""));
  installed_.InstalledAddons();
  installed_.InstalledTransports();
  EXPECT_THAT(
      rows_.calls,
      ElementsAre(kInstalledAddonHeading, "fillDivWithUpdates installedaddons|A|N/A|About A|1|-",
                  kInstalledAddonHeading, "fillDiv installedaddons|A|N/A|About A|2|-",
                  kInstalledTransportHeading, "fillDiv installedtransports|T|N/A|About T|1|-",
                  kInstalledTransportHeading,
                  "fillDivWithUpdates installedtransports|T|N/A|About T|2|-"));
}

TEST_F(Updates, RowsOfChannelsAreAddedOncePerSourceUnderOneHeading) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetDatastore(RegistryText("", "", Channel("c", "C", "1")));
  SetManifest("a.xml", ManifestText("", "", ""));
  SetManifest("b.xml", ManifestText("", "", Offer("channel", "c", "C", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|C|1|About C|1|-",
                          "fillDivWithUpdates installedchannels|C|1|About C|2|-"));
}

class NoList : public Updates, public testing::WithParamInterface<const char*> {};

TEST_P(NoList, ManifestOfThatKindIsPassedOver) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetDatastore(RegistryText(Addon("a", "A", "a.dll"), "", Channel("c", "C", "1")));
  SetManifest("a.xml", GetParam());
  SetManifest("b.xml", ManifestText("", "", ""));
  installed_.InstalledAddons();
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledAddonHeading, "fillDiv installedaddons|A|N/A|About A|1|-",
                          kInstalledChannelHeading, "fillDiv installedchannels|C|1|About C|1|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Manifests, NoList,
                         testing::Values("", "<components>", "<html>Please log in</html>",
                                         "<components/>", "<root><addons/><channels/></root>",
                                         "<!DOCTYPE html><html></html>", "no xml at all",
                                         "<components><transports/></components>"));

TEST_F(Updates, MissingManifestIsSkipped) {
  SetDatastore(RegistryText(Addon("a", "A", "a.dll"), "", ""));
  installed_.InstalledAddons();
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Updates, MissingVersionOfAMatchedOfferIsLoggedAndEndsTheRows) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1") + Channel("b", "B", "1")));
  SetManifest("a.xml", ManifestText("", "", "<channel id='b'><name>B</name></channel>"));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|A|1|About A|1|-"));
  // After it, the datastore's channels are done; nothing else fails.
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 91, kNotSet)));
}

TEST_F(Updates, LaterEntryOfAnIdDoesNotStandInForTheFirst) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1")));
  SetManifest("a.xml", ManifestText("", "", "<channel id='a'/>" + Offer("channel", "a", "A", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 91, kNotSet)));
}

TEST_F(Updates, MissingVersionOfAnOfferNotInstalledHarmsNothing) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1")));
  SetManifest("a.xml", ManifestText("", "", "<channel id='zzz'/>"));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Updates, MissingTextOfAnInstalledEntryIsLoggedAndEndsTheRows) {
  SetDatastore(RegistryText("", "",
                            Channel("a", "A", "1") +
                                "<channel id='b' name='B' version='1'><core/></channel>" +
                                Channel("c", "C", "1")));
  SetManifest("a.xml", ManifestText("", "", ""));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 91, kNotSet)));
}

TEST_F(Updates, OfferWithoutAnIdEndsTheWalkOnlyOfThoseThatReachIt) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1") + Channel("b", "B", "1")));
  SetManifest("a.xml", ManifestText("", "",
                                    Offer("channel", "a", "A", "2") + "<channel/>" +
                                        Offer("channel", "b", "B", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDivWithUpdates installedchannels|A|1|About A|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 91, kNotSet)));
}

TEST_F(Updates, IdsOfTheRowsAreCollected) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetDatastore(RegistryText("", "", Channel("a", "A", "1") + Channel("b", "B", "2")));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "b", "B", "3")));
  SetManifest("b.xml", ManifestText("", "", ""));
  installed_.InstalledChannels();
  EXPECT_THAT(shown_.ids, ElementsAre("a", "b", "a", "b"));
}

TEST_F(Updates, EntriesAtAnyDepthOfTheirContainerAreOffers) {
  SetDatastore(RegistryText("", "", Channel("a", "A", "1")));
  SetManifest("a.xml",
              ManifestText("", "", "<x><y>" + Offer("channel", "a", "A", "2") + "</y></x>"));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDivWithUpdates installedchannels|A|1|About A|1|-"));
}

TEST_F(Updates, CustomChannelOfADatastoreChannelInOtherLettersIsNotListedAfterAll) {
  SetDatastore(RegistryText("", "", Channel("News", "News", "1")));
  SetCustomRegistry(
      RegistryText("", "", Channel("sky", "Sky", "1.0") + Channel("NEWS", "Other News", "2")));
  // The offer ends the check of the custom channels before its first row.
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "sky", "Sky", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|1|About News|1|-",
                                       "fillDiv installedchannels|Sky|1.0|About Sky|2|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddCustomInfo", 9, kSubscript)));
}

TEST_F(Updates, ChannelOfBothFilesIsListedOnceAsTheDatastoreHasIt) {
  SetDatastore(RegistryText("", "", Channel("News", "News", "1")));
  SetCustomRegistry(
      RegistryText("", "", Channel("NEWS", "Other News", "2") + Channel("sky", "Sky", "3")));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "sky", "Sky", "3")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|News|1|About News|1|-",
                                       "fillDiv installedchannels|Sky|3|About Sky|2|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Updates, CustomChannelStaysWhereTheDatastoresOneCouldNotBeListed) {
  SetDatastore(RegistryText("", "", Channel("sky", "Sky", "1.0") + Channel("news", "News", "1")));
  SetCustomRegistry(RegistryText("", "", Channel("news", "Own News", "2")));
  // The offer ends the check of the datastore's channels before its first row.
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "sky", "Sky", "2")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kInstalledChannelHeading,
                                       "fillDiv installedchannels|Own News|2|About Own News|1|-"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddInfo", 9, kSubscript)));
}

TEST_F(Updates, CustomChannelsThatNoSourceShowedHaveOneRowEachWithoutLetterCase) {
  sources_.UpdateSources.clear();
  SetDatastore(RegistryText("", "", ""));
  SetCustomRegistry(RegistryText("", "",
                                 Channel("sky", "Sky", "1") + Channel("SKY", "Sky 2", "2") +
                                     Channel("sea", "Sea", "3") + Channel("sky", "Sky 3", "4")));
  installed_.InstalledChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kInstalledChannelHeading, "fillDiv installedchannels|Sky|1|About Sky|1|-",
                          "fillDiv installedchannels|Sea|3|About Sea|2|-"));
}

}  // namespace
}  // namespace kitbay::catalog
