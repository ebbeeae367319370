// Reading the manifest entry of the component being installed.
#include "registration_fixture.h"

namespace kitbay::install {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class EnterComponent : public RegistrationTest {
 protected:
  static Elements AddonElements() {
    return {{"progid", "Chess.Game"},
            {"name", "Chess"},
            {"description", "Plays"},
            {"filename", "chess.dll"},
            {"category", "games"},
            {"autoaccept", "1"},
            {"params", "<rulesengine>Chess.Rules</rulesengine><ocxengine>Chess.Board</ocxengine>"},
            {"offline", "0"},
            {"dependencies", "chess.dll,board.dll"}};
  }
  static Elements TransportElements() {
    return {{"progid", "Relay.Transport"},
            {"filename", "relay.dll,line.dll"},
            {"name", "Relay"},
            {"category", ""},
            {"version", "1.0.0.1"},
            {"displayname", "The Relay"},
            {"instructions", "Log in"},
            {"useapplicationlogin", "1"}};
  }
  static Elements ChannelElements() {
    return {{"progid", "Feed.Channel"}, {"xmlfilename", "news.xml"},
            {"version", "2.0"},         {"description", "Reads"},
            {"category", ""},           {"name", "News"},
            {"filename", "news.dll"},   {"dependencies", "feed.dll"}};
  }

  void OfferAddon(const Elements& elements,
                  const std::string& attributes = "id='chess' type='game'") {
    Offer("a.xml", "<addons>" + ManifestEntry("addon", attributes, elements) + "</addons>");
  }
  void OfferTransport(const Elements& elements) {
    Offer("a.xml",
          "<transports>" + ManifestEntry("transport", "id='relay'", elements) + "</transports>");
  }
  void OfferChannel(const Elements& elements) {
    Offer("a.xml", "<channels>" + ManifestEntry("channel", "id='news'", elements) + "</channels>");
  }

  bool EnterAddon(const std::string& id = "chess") {
    session_.package_name = id;
    return registration_.enterAddon();
  }
  bool EnterTransport(const std::string& id = "relay") {
    session_.package_name = id;
    return registration_.enterTransport();
  }
  bool EnterChannel(const std::string& id = "news") {
    session_.package_name = id;
    return registration_.enterChannel();
  }

  void ExpectNothingEntered() {
    EXPECT_THAT(session_.record, ElementsAreArray(ComponentRecord{}));
    EXPECT_THAT(session_.libraries, IsEmpty());
  }
};

TEST_F(EnterComponent, AddonFillsItsSlotsInTheirOrder) {
  OfferAddon(AddonElements());
  EXPECT_TRUE(EnterAddon());
  EXPECT_THAT(session_.record,
              ElementsAre("chess", "Chess.Game", "Chess", "Plays", "chess.dll", "games", "1",
                          "Chess.Rules", "Chess.Board", "game", "0"));
  EXPECT_THAT(session_.libraries, ElementsAre("chess.dll", "board.dll"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(EnterComponent, TransportFillsItsSlotsInTheirOrder) {
  OfferTransport(TransportElements());
  EXPECT_TRUE(EnterTransport());
  EXPECT_THAT(session_.record,
              ElementsAre("relay", "Relay.Transport", "relay.dll,line.dll", "Relay", "", "1.0.0.1",
                          "The Relay", "Log in", "1", "", ""));
  EXPECT_THAT(session_.libraries, ElementsAre("relay.dll", "line.dll"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(EnterComponent, ChannelFillsItsSlotsInTheirOrder) {
  OfferChannel(ChannelElements());
  EXPECT_TRUE(EnterChannel());
  EXPECT_THAT(session_.record, ElementsAre("news", "Feed.Channel", "news.xml", "2.0", "Reads", "",
                                           "News", "news.dll", "", "", ""));
  EXPECT_THAT(session_.libraries, ElementsAre("feed.dll"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(EnterComponent, SlotsHaveNames) {
  OfferAddon(AddonElements());
  EnterAddon();
  EXPECT_EQ(session_.record[addon_slot::kFilename], "chess.dll");
  EXPECT_EQ(session_.record[addon_slot::kType], "game");
  EXPECT_EQ(session_.record[addon_slot::kOcxEngine], "Chess.Board");
  OfferTransport(TransportElements());
  sources_.UpdateSources.pop_back();
  EnterTransport();
  EXPECT_EQ(session_.record[transport_slot::kFilename], "relay.dll,line.dll");
  EXPECT_EQ(session_.record[transport_slot::kDisplayname], "The Relay");
  OfferChannel(ChannelElements());
  sources_.UpdateSources.pop_back();
  EnterChannel();
  EXPECT_EQ(session_.record[channel_slot::kFilename], "news.dll");
  EXPECT_EQ(session_.record[channel_slot::kXmlFilename], "news.xml");
}

TEST_F(EnterComponent, TransportWithoutApplicationLoginHasZero) {
  Elements elements = TransportElements();
  elements.erase("useapplicationlogin");
  OfferTransport(elements);
  EXPECT_TRUE(EnterTransport());
  EXPECT_EQ(session_.record[transport_slot::kUseApplicationLogin], "0");
}

TEST_F(EnterComponent, TransportWithEmptyApplicationLoginHasTheEmptyText) {
  Elements elements = TransportElements();
  elements["useapplicationlogin"] = "";
  OfferTransport(elements);
  EXPECT_TRUE(EnterTransport());
  EXPECT_EQ(session_.record[transport_slot::kUseApplicationLogin], "");
}

TEST_F(EnterComponent, ParametersWithoutTextAreBothEmpty) {
  for (const char* params : {"", "  ", "<a/><b/>", "<only/>", "<!-- none -->"}) {
    Elements elements = AddonElements();
    elements["params"] = params;
    OfferAddon(elements);
    EXPECT_TRUE(EnterAddon()) << params;
    EXPECT_EQ(session_.record[addon_slot::kRulesEngine], "");
    EXPECT_EQ(session_.record[addon_slot::kOcxEngine], "");
  }
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(EnterComponent, ParametersAreTheFirstTwoElementsWhateverTheirNames) {
  Elements elements = AddonElements();
  elements["params"] = "\n <!-- first --><ocxengine> a </ocxengine>\n<x>b</x><y>c</y>";
  OfferAddon(elements);
  EXPECT_TRUE(EnterAddon());
  EXPECT_EQ(session_.record[addon_slot::kRulesEngine], "a");
  EXPECT_EQ(session_.record[addon_slot::kOcxEngine], "b");
}

TEST_F(EnterComponent, FirstParameterMayBeEmptyBesideASecond) {
  Elements elements = AddonElements();
  elements["params"] = "<rulesengine/><ocxengine>b</ocxengine>";
  OfferAddon(elements);
  EXPECT_TRUE(EnterAddon());
  EXPECT_EQ(session_.record[addon_slot::kRulesEngine], "");
  EXPECT_EQ(session_.record[addon_slot::kOcxEngine], "b");
}

TEST_F(EnterComponent, ParametersWithTextButWithoutTwoElementsAreMissing) {
  for (const char* params : {"text", "<rulesengine>a</rulesengine>", "text<a/>"}) {
    Elements elements = AddonElements();
    elements["params"] = params;
    OfferAddon(elements);
    EXPECT_FALSE(EnterAddon()) << params;
    EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::enterAddon", 91, kNotSet)));
    log_.entries.clear();
    ExpectNothingEntered();
  }
}

TEST_F(EnterComponent, EntryIsFoundWithoutRegardToTheCaseOfAToZ) {
  OfferAddon(AddonElements(), "id='CheSS' type='game'");
  EXPECT_TRUE(EnterAddon("cHess"));
  EXPECT_EQ(session_.record[kIdSlot], "CheSS");
}

TEST_F(EnterComponent, OtherLettersCountOnlyForThemselves) {
  OfferAddon(AddonElements(), "id='\u00DCbung' type='game'");
  EXPECT_FALSE(EnterAddon("\u00FCbung"));
}

TEST_F(EnterComponent, FirstMatchInTheOrderOfTheSourcesCounts) {
  Elements elements = ChannelElements();
  Offer("empty.xml", "<channels/>");
  elements["version"] = "first";
  const std::string first = ManifestEntry("channel", "id='NEWS'", elements);
  elements["version"] = "second";
  const std::string second = ManifestEntry("channel", "id='news'", elements);
  Offer("b.xml", "<channels>" + first + second + "</channels>");
  Offer("a.xml", "<channels>" + second + "</channels>");
  EXPECT_TRUE(EnterChannel());
  EXPECT_EQ(session_.record[channel_slot::kVersion], "first");
}

TEST_F(EnterComponent, FirstMatchCountsEvenWhenALaterOneIsWhole) {
  Elements elements = ChannelElements();
  const std::string whole = ManifestEntry("channel", "id='news'", elements);
  elements.erase("progid");
  const std::string torn = ManifestEntry("channel", "id='news'", elements);
  Offer("a.xml", "<channels>" + torn + whole + "</channels>");
  EXPECT_FALSE(EnterChannel());
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::enterChannel", 91, kNotSet)));
}

TEST_F(EnterComponent, ManifestsThatDoNotLoadArePassedOver) {
  sources_.UpdateSources.emplace_back("updates.example/missing.xml");
  Offer("torn.xml", "<channels>");
  OfferChannel(ChannelElements());
  EXPECT_TRUE(EnterChannel());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(EnterComponent, EntryWithoutAnIdIsPassedOver) {
  Offer("a.xml", "<channels>" + ManifestEntry("channel", "", ChannelElements()) +
                     ManifestEntry("channel", "name='x' id='news'", ChannelElements()) +
                     "</channels>");
  EXPECT_TRUE(EnterChannel());
  EXPECT_EQ(session_.record[kIdSlot], "news");
}

TEST_F(EnterComponent, AddonsAndChannelsAreFoundAtAnyDepthTransportsOnlyDirectly) {
  Offer("a.xml",
        "<addons><group>" + ManifestEntry("addon", "id='chess' type='game'", AddonElements()) +
            "</group></addons><transports><group>" +
            ManifestEntry("transport", "id='relay'", TransportElements()) +
            "</group></transports><channels><group>" +
            ManifestEntry("channel", "id='news'", ChannelElements()) + "</group></channels>");
  EXPECT_TRUE(EnterAddon());
  EXPECT_TRUE(EnterChannel());
  EXPECT_FALSE(EnterTransport());
}

TEST_F(EnterComponent, EntryOfAnotherKindIsNotTaken) {
  OfferChannel(ChannelElements());
  EXPECT_FALSE(EnterAddon("news"));
  EXPECT_FALSE(EnterTransport("news"));
}

TEST_F(EnterComponent, ComponentInNoManifestIsLoggedByEachProcedureAndEmptiesRecordAndList) {
  OfferAddon(AddonElements());
  ASSERT_TRUE(EnterAddon());
  EXPECT_FALSE(EnterAddon("other"));
  ExpectNothingEntered();
  EXPECT_FALSE(EnterTransport("other"));
  EXPECT_FALSE(EnterChannel("other"));
  const std::string why = std::string(kNotSet) + ": no manifest has an entry of \"other\"";
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::enterAddon", 91, why),
                                        Entry("Kitbay::enterTransport", 91, why),
                                        Entry("Kitbay::enterChannel", 91, why)));
}

TEST_F(EnterComponent, WithoutSourcesThereIsNoEntry) {
  EXPECT_FALSE(EnterAddon());
  EXPECT_EQ(log_.entries.size(), 1U);
}

TEST_F(EnterComponent, EveryTextOfAnAddonIsNeeded) {
  for (const auto& [name, text] : AddonElements()) {
    OfferAddon(AddonElements());
    ASSERT_TRUE(EnterAddon());
    Elements elements = AddonElements();
    elements.erase(name);
    OfferAddon(elements);
    EXPECT_FALSE(EnterAddon()) << name;
    EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::enterAddon", 91, kNotSet)));
    log_.entries.clear();
    ExpectNothingEntered();
  }
}

TEST_F(EnterComponent, AnAddonsTypeIsNeeded) {
  OfferAddon(AddonElements(), "id='chess'");
  EXPECT_FALSE(EnterAddon());
  ExpectNothingEntered();
}

TEST_F(EnterComponent, EveryTextOfATransportButTheLoginIsNeeded) {
  for (const auto& [name, text] : TransportElements()) {
    Elements elements = TransportElements();
    elements.erase(name);
    OfferTransport(elements);
    EXPECT_EQ(EnterTransport(), name == "useapplicationlogin") << name;
  }
}

TEST_F(EnterComponent, EveryTextOfAChannelIsNeeded) {
  for (const auto& [name, text] : ChannelElements()) {
    Elements elements = ChannelElements();
    elements.erase(name);
    OfferChannel(elements);
    EXPECT_FALSE(EnterChannel()) << name;
    ExpectNothingEntered();
  }
}

TEST_F(EnterComponent, NoDependenciesAreAnEmptyList) {
  Elements elements = AddonElements();
  elements["dependencies"] = "";
  OfferAddon(elements);
  EXPECT_TRUE(EnterAddon());
  EXPECT_THAT(session_.libraries, IsEmpty());
}

TEST_F(EnterComponent, DependenciesAreSplitAtEachCommaAndNotTrimmed) {
  Elements elements = AddonElements();
  elements["dependencies"] = " a.dll, b.dll,,c.dll, ";
  OfferAddon(elements);
  EXPECT_TRUE(EnterAddon());
  EXPECT_THAT(session_.libraries, ElementsAre("a.dll", " b.dll", "", "c.dll", ""));
}

TEST_F(EnterComponent, TextsAreReadWithoutTheWhiteSpaceAtTheirEnds) {
  Elements elements = ChannelElements();
  elements["name"] = "\n  News &amp; <![CDATA[<Views>]]> \t";
  OfferChannel(elements);
  EXPECT_TRUE(EnterChannel());
  EXPECT_EQ(session_.record[channel_slot::kName], "News & <Views>");
}

TEST_F(EnterComponent, ReadingThatFailsAtAnyFileOperationEntersNothing) {
  Offer("empty.xml", "<channels/>");
  OfferChannel(ChannelElements());
  ASSERT_TRUE(EnterChannel());
  files_.FailAt(2, base::RuntimeError::kPathFileAccessError);
  EXPECT_FALSE(EnterChannel());
  ExpectNothingEntered();
}

}  // namespace
}  // namespace kitbay::install
