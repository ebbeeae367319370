#include "catalog/new_component_listing.h"

#include "fakes/signing_maker.h"
#include "manifest_fixture.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kBar =
    "AddImageTab imgtab1|<span class='styleclass' style='background:gray; width:100%; height:33px; "
    "position:relative; display:none;' id='tabencloser'><img src='ichannels.gif' "
    "id='channels'><img src='utrans.gif' id='trans'><img src='uaddons.gif' id='addons' ></span>";
constexpr const char* kNewAddonHeading =
    "FillDivHeader updatedaddons|tabencloser|New Addons Available:";
constexpr const char* kNewTransportHeading =
    "FillDivHeader updatedtransports|tabencloser|New Messaging Services Available:";
constexpr const char* kNewChannelHeading =
    "FillDivHeader updatedchannels|tabencloser|New Channels Available:";
constexpr const char* kNoAddons =
    "FillEmptyDivHeader updatedaddons|<font style='font-family:verdana; font-size:11;  "
    "margin-right:4pt;'>No additional Addons available right now<hr style='height:1pt; '></font>";
constexpr const char* kNoTransports =
    "FillEmptyDivHeader updatedtransports|<font style='font-family:verdana; font-size:11;  "
    "margin-right:4pt;'>No additional Messaging Services available right now<hr "
    "style='height:1pt; '></font>";
constexpr const char* kNoChannels =
    "FillEmptyDivHeader updatedchannels|<font style='font-family:verdana; font-size:11;  "
    "margin-right:4pt;'>No additional Channels available right now<hr style='height:1pt; "
    "'></font>";

class New : public ManifestTest {
 protected:
  New() {
    sources_.UpdateSources = {"one.example/a.xml"};
    SetDatastore(RegistryText("", "", ""));
  }

  NewComponents found_;
  NewComponentListing new_{log_, catalog_files_, sources_, found_, rows_};
};

TEST_F(New, WithoutSourcesOnlyHeadingAndEmptyMarkupAreWrittenAndTheTabIsHidden) {
  sources_.UpdateSources.clear();
  new_.funcShowUpdates();
  new_.funcShowTransports();
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kBar, kNewAddonHeading, kNoAddons, "ShowTab tabencloser|addons|-",
                          kNewTransportHeading, kNoTransports, "ShowTab tabencloser|trans|-",
                          kNewChannelHeading, kNoChannels, "ShowTab tabencloser|channels|-"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(New, OffersOfSigningSourcesAloneSayWhatTheirPackageMustBe) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  const fakes::SigningMaker maker(1, "b.xml");
  sources_.keys["b.xml"] = {.key = maker.key()};
  const auto with_digest = [](const std::string& offer) {
    return offer.substr(0, offer.rfind("</")) + "<size>12</size><sha256>AB</sha256></addon>";
  };
  SetManifest("a.xml", ManifestText(with_digest(Offer("addon", "a", "A", "1")), "", ""));
  SetManifest("b.xml", maker.Sign(ManifestText(with_digest(Offer("addon", "b", "B", "1")) +
                                                   Offer("addon", "c", "C", "1"),
                                               "", ""),
                                  1, std::chrono::sys_days(std::chrono::days(30000))));
  new_.funcShowUpdates();
  ASSERT_EQ(found_.addon.size(), 3U);
  EXPECT_FALSE(found_.addon[0].digest);
  ASSERT_TRUE(found_.addon[1].digest);
  EXPECT_EQ(found_.addon[1].digest->manifest, "b.xml");
  EXPECT_EQ(found_.addon[1].digest->size, "12");
  EXPECT_EQ(found_.addon[1].digest->sha256, "ab");
  ASSERT_TRUE(found_.addon[2].digest);
  EXPECT_EQ(found_.addon[2].digest->size, "");
}

TEST_F(New, EachKindListsItsOwnOffers) {
  SetManifest("a.xml",
              ManifestText(Offer("addon", "a", "A", "1"), Offer("transport", "t", "T", "2"),
                           Offer("channel", "c", "C", "3")));
  new_.funcShowUpdates();
  new_.funcShowTransports();
  new_.funcShowChannels();
  EXPECT_THAT(
      rows_.calls,
      ElementsAre(kBar, kNewAddonHeading, "showUpdates updatedaddons|A|1|New A|1",
                  "ShowTab tabencloser|addons|shown", kNewTransportHeading,
                  "showUpdates updatedtransports|T|2|New T|1", "ShowTab tabencloser|trans|shown",
                  kNewChannelHeading, "showUpdates updatedchannels|C|3|New C|1",
                  "ShowTab tabencloser|channels|shown"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(New, ListsHoldWhatEachRowShowsInOrder) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetManifest("a.xml", ManifestText(Offer("addon", "a", "A", "1"), "", ""));
  SetManifest("b.xml", ManifestText(Offer("addon", "b", "B", "2"), "", ""));
  new_.funcShowUpdates();
  ASSERT_THAT(found_.addon, testing::SizeIs(2));
  EXPECT_EQ(found_.addon[0].id, "a");
  EXPECT_EQ(found_.addon[0].name, "A");
  EXPECT_EQ(found_.addon[0].url, "packages.example/a.zip");
  EXPECT_EQ(found_.addon[1].id, "b");
  EXPECT_EQ(found_.addon[1].url, "packages.example/b.zip");
  EXPECT_THAT(found_.transport, IsEmpty());
  EXPECT_THAT(found_.channel, IsEmpty());
}

TEST_F(New, EachListingEmptiesTheListsOfItsKindAlone) {
  SetManifest("a.xml",
              ManifestText(Offer("addon", "a", "A", "1"), "", Offer("channel", "c", "C", "3")));
  new_.funcShowUpdates();
  new_.funcShowChannels();
  SetManifest("a.xml", ManifestText("", "", ""));
  new_.funcShowUpdates();
  EXPECT_THAT(found_.addon, IsEmpty());
  EXPECT_THAT(found_.channel, testing::SizeIs(1));
}

TEST_F(New, HiddenTabIsShownAgainWhenThereIsAnOffer) {
  new_.funcShowChannels();
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "c", "C", "3")));
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kNewChannelHeading, kNoChannels, "ShowTab tabencloser|channels|-",
                          kNewChannelHeading, "showUpdates updatedchannels|C|3|New C|1",
                          "ShowTab tabencloser|channels|shown"));
}

TEST_F(New, InstalledIdsOfBothFilesAreNotNewInAnyLetterCase) {
  SetDatastore(RegistryText(Addon("Chat", "Chat", "c.dll"), "", Channel("news", "News", "1")));
  SetCustomRegistry(RegistryText(Addon("DICE", "Dice", "d.dll"), "", Channel("Sky", "Sky", "1")));
  SetManifest("a.xml",
              ManifestText(
                  Offer("addon", "chat", "Chat", "9") + Offer("addon", "dice", "Dice", "9") +
                      Offer("addon", "cards", "Cards", "9"),
                  "", Offer("channel", "NEWS", "News", "9") + Offer("channel", "sKY", "Sky", "9")));
  new_.funcShowUpdates();
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kBar, kNewAddonHeading, "showUpdates updatedaddons|Cards|9|New Cards|1",
                          "ShowTab tabencloser|addons|shown", kNewChannelHeading, kNoChannels,
                          "ShowTab tabencloser|channels|-"));
}

TEST_F(New, OfferInOtherLettersCountsAsInstalledHereButNotInTheUpdateCheck) {
  SetDatastore(RegistryText(Addon("Chat", "Chat", "c.dll"), "", ""));
  SetManifest("a.xml", ManifestText(Offer("addon", "chat", "Chat", "9"), "", ""));
  AvailableUpdates available(log_, catalog_files_, versions_, shown_, rows_);
  InstalledWithUpdates installed(log_, catalog_files_, settings_, sources_, available, shown_,
                                 rows_);
  installed.InstalledAddons();
  new_.funcShowUpdates();
  EXPECT_THAT(rows_.calls,
              ElementsAre("FillDivHeader installedaddons|itabencloser|Currently Installed  Addons",
                          "fillDiv installedaddons|Chat|N/A|About Chat|1|-", kBar, kNewAddonHeading,
                          kNoAddons, "ShowTab tabencloser|addons|-"));
}

TEST_F(New, IdInstalledAsAnotherKindIsNew) {
  SetDatastore(RegistryText(Addon("a", "A", "a.dll"), "", ""));
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "a", "A", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(found_.channel, testing::SizeIs(1));
}

TEST_F(New, InstalledIdIsTheFirstAttributeWhateverItsName) {
  SetDatastore("<root><channels><channel name='news' id='other'/></channels></root>");
  SetManifest("a.xml", ManifestText("", "",
                                    Offer("channel", "news", "News", "1") +
                                        Offer("channel", "other", "Other", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kNewChannelHeading, "showUpdates updatedchannels|Other|1|New Other|1",
                          "ShowTab tabencloser|channels|shown"));
}

TEST_F(New, OfferIsKnownByItsFirstAttributeWhateverItsName) {
  SetDatastore(RegistryText("", "", Channel("news", "News", "1")));
  SetManifest("a.xml",
              ManifestText("", "",
                           "<channel label='NEWS' id='x'/><channel label='x' id='news'>"
                           "<name>News</name><version>1</version><description/><url/></channel>"));
  new_.funcShowChannels();
  ASSERT_THAT(found_.channel, testing::SizeIs(1));
  EXPECT_EQ(found_.channel[0].id, "news");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(New, OnlyDirectChildrenOfTheContainerCountAsInstalled) {
  SetDatastore("<root><channels><x><channel id='a'/></x><channel id='b'/></channels></root>");
  SetManifest(
      "a.xml",
      ManifestText("", "", Offer("channel", "a", "A", "1") + Offer("channel", "b", "B", "1")));
  new_.funcShowChannels();
  ASSERT_THAT(found_.channel, testing::SizeIs(1));
  EXPECT_EQ(found_.channel[0].id, "a");
}

TEST_F(New, OffersStandAtAnyDepthOfTheirContainer) {
  SetManifest("a.xml", ManifestText("", "",
                                    "<x>" + Offer("channel", "a", "A", "1") + "</x>" +
                                        Offer("channel", "b", "B", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(
      rows_.calls,
      ElementsAre(kNewChannelHeading, "showUpdates updatedchannels|A|1|New A|1",
                  "showUpdates updatedchannels|B|1|New B|2", "ShowTab tabencloser|channels|shown"));
}

TEST_F(New, ComponentOfTwoSourcesHasARowForEachAndTheNumbersGoOn) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "c", "C", "1")));
  SetManifest(
      "b.xml",
      ManifestText("", "", Offer("channel", "c", "C", "2") + Offer("channel", "c", "C", "3")));
  new_.funcShowChannels();
  EXPECT_THAT(
      rows_.calls,
      ElementsAre(kNewChannelHeading, "showUpdates updatedchannels|C|1|New C|1",
                  "showUpdates updatedchannels|C|2|New C|2",
                  "showUpdates updatedchannels|C|3|New C|3", "ShowTab tabencloser|channels|shown"));
}

TEST_F(New, MissingTextIsLoggedAndEndsTheRowsOfThatSource) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetManifest("a.xml", ManifestText("", "",
                                    Offer("channel", "a", "A", "1") +
                                        "<channel id='x'><name>X</name></channel>" +
                                        Offer("channel", "b", "B", "1")));
  SetManifest("b.xml", ManifestText("", "", Offer("channel", "c", "C", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(
      rows_.calls,
      ElementsAre(kNewChannelHeading, "showUpdates updatedchannels|A|1|New A|1",
                  "showUpdates updatedchannels|C|1|New C|2", "ShowTab tabencloser|channels|shown"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdatesInfo", 91, kNotSet)));
  EXPECT_THAT(found_.channel, testing::SizeIs(2));
}

TEST_F(New, EveryTextOfAnOfferIsNeeded) {
  const std::string whole = Offer("addon", "a", "A", "1");
  for (const char* text : {"name", "version", "description", "url"}) {
    std::string offer = whole;
    offer.replace(offer.find(std::string("<") + text + ">") + 1, 1, "z");
    offer.replace(offer.find(std::string("</") + text + ">") + 2, 1, "z");
    SetManifest("a.xml", ManifestText(offer, "", ""));
    log_.entries.clear();
    rows_.calls.clear();
    new_.funcShowUpdates();
    EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdatesAddonInfo", 91, kNotSet))) << text;
    EXPECT_THAT(found_.addon, IsEmpty()) << text;
    EXPECT_THAT(rows_.calls,
                ElementsAre(kBar, kNewAddonHeading, kNoAddons, "ShowTab tabencloser|addons|-"))
        << text;
  }
}

TEST_F(New, FailureOfATransportManifestHasItsOwnProcedure) {
  SetManifest("a.xml", ManifestText("", "<transport id='t'/>", ""));
  new_.funcShowTransports();
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdatesTransportInfo", 91, kNotSet)));
  EXPECT_THAT(rows_.calls,
              ElementsAre(kNewTransportHeading, kNoTransports, "ShowTab tabencloser|trans|-"));
}

TEST_F(New, InstalledEntryWithoutAnyAttributeIsLoggedAndNothingIsWritten) {
  SetDatastore(
      "<root><addons><addon/></addons><transports><transport/></transports>"
      "<channels><channel/></channels></root>");
  new_.funcShowUpdates();
  new_.funcShowTransports();
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls, ElementsAre(kBar));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(" Kitbay::funcShowUpdates", 91, kNotSet),
                                        Entry("Kitbay::funcShowTransports", 91, kNotSet),
                                        Entry(" Kitbay::funcShowChannels", 91, kNotSet)));
}

class UselessManifest : public New, public testing::WithParamInterface<const char*> {};

TEST_P(UselessManifest, IsPassedOver) {
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  SetManifest("a.xml", GetParam());
  SetManifest("b.xml", ManifestText("", "", Offer("channel", "c", "C", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(rows_.calls,
              ElementsAre(kNewChannelHeading, "showUpdates updatedchannels|C|1|New C|1",
                          "ShowTab tabencloser|channels|shown"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Manifests, UselessManifest,
                         testing::Values("", "<components>", "<html>Please log in</html>",
                                         "<components/>",
                                         "<root><channels><channel/></channels></root>",
                                         "<!DOCTYPE html><html></html>"));

TEST_F(New, FilesThatDoNotLoadLeaveNothingInstalled) {
  SetDatastore("<root>");
  SetCustomRegistry("");
  SetManifest("a.xml", ManifestText("", "", Offer("channel", "c", "C", "1")));
  new_.funcShowChannels();
  EXPECT_THAT(found_.channel, testing::SizeIs(1));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(New, RowNumbersEndAt32767) {
  std::string offers;
  for (int i = 0; i < 32768; ++i) {
    offers += "<channel id='c'><name/><version/><description/><url/></channel>";
  }
  SetManifest("a.xml", ManifestText("", "", offers));
  new_.funcShowChannels();
  EXPECT_THAT(found_.channel, testing::SizeIs(32767));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::UpdatesInfo", 6, "Overflow")));
}

}  // namespace
}  // namespace kitbay::catalog
