// Writing the record into the registry files, and what the user sees of it.
#include <optional>

#include "catalog/xml_file.h"
#include "registration_fixture.h"

namespace kitbay::install {
namespace {

using base::RuntimeError;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

constexpr const char* kPrologue =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- the suite's -->\r\n<root vendor=\"o\">\r\n"
    "\t<unknown><b/> text <?keep it?></unknown>\n";
constexpr const char* kEpilogue = "\r\n</root>\r\n<!-- end -->\n";

std::string Registry(const std::string& addons, const std::string& transports = "",
                     const std::string& channels = "") {
  return std::string(kPrologue) + "<addons>" + addons + "</addons>\n<transports>" + transports +
         "</transports>\n<channels>" + channels + "</channels>" + kEpilogue;
}

class UpdateRegistry : public RegistrationTest {
 protected:
  UpdateRegistry() { files_.AddFile(kDatastore, Registry(kOldAddon, kOldTransport, kOldChannel)); }

  static constexpr const char* kOldAddon =
      "\n  <!-- first --><addon id=\"notes\" name=\"Notes\"><params> </params></addon>\n";
  static constexpr const char* kOldTransport =
      "<transport id=\"lan\" name=\"Lan\"><core/></transport>";
  static constexpr const char* kOldChannel =
      "<channel id=\"presence\" name=\"Presence\" version=\"1.0\"><core>1</core></channel>";

  void TakeAddon() {
    session_.record = {"chess", "Chess.Game",  "Chess",       "Plays", "chess.dll", "games",
                       "1",     "Chess.Rules", "Chess.Board", "game",  "0"};
  }
  void TakeTransport() {
    session_.record = {"relay",
                       "Relay.Transport",
                       "relay.dll,line.dll",
                       "Relay",
                       "net",
                       "1.0",
                       "The Relay",
                       "Log in",
                       "1"};
  }
  void TakeChannel(const std::string& id = "news") {
    session_.record = {id, "Feed.Channel", "news.xml", "2.0", "Reads", "", "News", "news.dll"};
  }

  static constexpr const char* kAddonEntry =
      "<addon id=\"chess\" name=\"Chess\" visibility=\"show\" type=\"game\">"
      "<progid>Chess.Game</progid><namespace>chess</namespace><displayname>Chess</displayname>"
      "<filename>chess.dll</filename><compatiblewithallclients>1</compatiblewithallclients>"
      "<autoaccept>1</autoaccept><description>Plays</description><core>1</core>"
      "<params><rulesengine>Chess.Rules</rulesengine><ocxengine>Chess.Board</ocxengine></params>"
      "</addon>";
  static constexpr const char* kTransportEntry =
      "<transport id=\"relay\" name=\"Relay\" type=\"messaging service\">"
      "<displayname>The Relay</displayname><instructions>Log in</instructions>"
      "<progid>Relay.Transport</progid><filename>relay.dll,line.dll</filename>"
      "<description>Relay</description><core>1</core>"
      "<useapplicationlogin>1</useapplicationlogin></transport>";

  static std::string ChannelEntry(const std::string& id) {
    return "<channel id=\"" + id +
           "\" name=\"News\" version=\"2.0\"><progid>Feed.Channel</progid><path>news.xml</path>"
           "<filename/><description>Reads</description><core>0</core></channel>";
  }

  /// The text of a child element of the datastore's entry with that id, as a reader sees it.
  std::string Written(const std::string& id, const char* element) {
    catalog::XmlDocument document;
    catalog::LoadXml(files_, kDatastore, document);
    const std::string path = "root//*[@id='" + id + "']";
    return catalog::ChildText(document.select_node(path.c_str()).node(), element);
  }

  void ExpectMessage(const std::string& text) {
    EXPECT_THAT(desktop_.calls(), ElementsAre("ShowMessage [" + text + "] [Kitbay] 0"));
  }
  void ExpectNothingShown(const std::string& page) {
    EXPECT_THAT(desktop_.calls(), IsEmpty());
    EXPECT_EQ(html_->TreeText(), page);
  }
  void ExpectRefusalTold(const std::string& text, const std::string& page) {
    EXPECT_EQ(desktop_.calls().back(), "ShowMessage [" + text + "] [Kitbay] 0");
    EXPECT_EQ(html_->TreeText(), page);
    EXPECT_EQ(Status(), "");
  }
};

TEST_F(UpdateRegistry, NewAddonIsTheLastOfItsListAndNothingElseChanges) {
  TakeAddon();
  EXPECT_TRUE(registration_.updateRegistry());
  EXPECT_EQ(Datastore(),
            Registry(std::string(kOldAddon) + kAddonEntry, kOldTransport, kOldChannel));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateRegistry, NewTransportIsTheLastOfItsListAndNothingElseChanges) {
  TakeTransport();
  EXPECT_TRUE(registration_.updateRegistryForTransport());
  EXPECT_EQ(Datastore(),
            Registry(kOldAddon, std::string(kOldTransport) + kTransportEntry, kOldChannel));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateRegistry, PresenceInAnyCaseGoesToTheDatastore) {
  files_.AddFile(kDatastore, Registry(" ", " ", ""));
  TakeChannel("PreSence");
  registration_.updateRegistryForChannel();
  EXPECT_EQ(Datastore(), Registry(" ", " ", ChannelEntry("PreSence")));
  EXPECT_FALSE(files_.IsFile(kCustomRegistry));
}

TEST_F(UpdateRegistry, AnyOtherChannelGoesToTheCustomRegistry) {
  const std::string datastore = Datastore();
  files_.AddFile(kCustomRegistry, Registry("<addon id=\"news\"/>", " ", "\n "));
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(CustomRegistry(), Registry("<addon id=\"news\"/>", " ", "\n " + ChannelEntry("news")));
  EXPECT_EQ(Datastore(), datastore);
}

TEST_F(UpdateRegistry, ChannelWhoseIdOnlyBeginsWithPresenceIsCustom) {
  TakeChannel("presence2");
  registration_.updateRegistryForChannel();
  EXPECT_TRUE(files_.IsFile(kCustomRegistry));
}

TEST_F(UpdateRegistry, MissingCustomRegistryIsCreatedFromItsLiteralFirst) {
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(CustomRegistry(), "<root><transports/><addons/><channels>" + ChannelEntry("news") +
                                  "</channels></root> ");
  EXPECT_THAT(files_.operations(), ElementsAre("Exists C:\\Ana\\CustomData\\customregistry.xml",
                                               "Replace C:\\Ana\\CustomData\\customregistry.xml",
                                               "Read C:\\Ana\\CustomData\\customregistry.xml",
                                               "Replace C:\\Ana\\CustomData\\customregistry.xml"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateRegistry, LiteralOfTheCustomRegistryEndsInABlank) {
  TakeChannel("bad\x01");
  registration_.updateRegistryForChannel();
  EXPECT_EQ(CustomRegistry(),
            "<root><transports></transports><addons></addons><channels></channels></root> ");
}

TEST_F(UpdateRegistry, CustomRegistryThatDoesNotLoadIsLeftAlone) {
  files_.AddFile(kCustomRegistry, "<root><channels>");
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(CustomRegistry(), "<root><channels>");
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, "Kitbay::updateRegistryForChannel");
}

TEST_F(UpdateRegistry, AddonWithoutCategoryIsPlayedAndNeitherCoreNorCompatible) {
  TakeAddon();
  session_.record[addon_slot::kCategory] = "";
  registration_.updateRegistry();
  EXPECT_EQ(Written("chess", "displayname"), "Play Chess");
  EXPECT_EQ(Written("chess", "compatiblewithallclients"), "0");
  EXPECT_EQ(Written("chess", "core"), "0");
}

TEST_F(UpdateRegistry, AddonWithoutAFirstParameterHasOneBlank) {
  TakeAddon();
  session_.record[addon_slot::kRulesEngine] = "";
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find("<core>1</core><params> </params></addon>"), std::string::npos);
}

TEST_F(UpdateRegistry, BlankOfTheParametersSurvivesTheNextSave) {
  TakeAddon();
  session_.record[addon_slot::kRulesEngine] = "";
  registration_.updateRegistry();
  const std::string first = Datastore();
  session_.record[kIdSlot] = "checkers";
  registration_.updateRegistry();
  EXPECT_EQ(Datastore().substr(0, first.find("</addons>")),
            first.substr(0, first.find("</addons>")));
}

TEST_F(UpdateRegistry, OfflineIsWrittenLastUnlessItIsZero) {
  TakeAddon();
  session_.record[addon_slot::kOffline] = "1";
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find("</params><offline>1</offline></addon>"), std::string::npos);
}

TEST_F(UpdateRegistry, EmptyOfflineIsWritten) {
  TakeAddon();
  session_.record[addon_slot::kOffline] = "";
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find("</params><offline/></addon>"), std::string::npos);
}

TEST_F(UpdateRegistry, TransportsAndChannelsWithoutCategoryAreNotCore) {
  TakeTransport();
  session_.record[transport_slot::kCategory] = "";
  registration_.updateRegistryForTransport();
  EXPECT_EQ(Written("relay", "core"), "0");
  TakeChannel("Presence");
  session_.record[channel_slot::kCategory] = "x";
  registration_.updateRegistryForChannel();
  EXPECT_EQ(Written("Presence", "core"), "1");
}

TEST_F(UpdateRegistry, ListWithoutAnEndTagTakesTheEntry) {
  files_.AddFile(kDatastore, "<root><a><addons/></a></root>");
  TakeAddon();
  registration_.updateRegistry();
  EXPECT_EQ(Datastore(), std::string("<root><a><addons>") + kAddonEntry + "</addons></a></root>");
}

TEST_F(UpdateRegistry, ValuesAreReadBackAsTheyWere) {
  const std::string odd = "<b a=\"1\" c='2'>&amp;</b> ]]> a\nb\tc  d B\u00FCcher \u0416 \U0001F4E8";
  TakeAddon();
  session_.record[addon_slot::kName] = odd + "\r\n\re";
  session_.record[addon_slot::kType] = "\t " + odd + " ";
  session_.record[addon_slot::kDescription] = odd;
  registration_.updateRegistry();
  EXPECT_EQ(Written("chess", "description"), odd);
  catalog::XmlDocument document;
  catalog::LoadXml(files_, kDatastore, document);
  const pugi::xml_node entry = document.select_node("root/addons/addon[2]").node();
  EXPECT_EQ(entry.attribute("name").value(), odd + "\r\n\re");
  EXPECT_EQ(entry.attribute("type").value(), "\t " + odd + " ");
}

TEST_F(UpdateRegistry, CarriageReturnsInATextAreWrittenAsTheLineFeedsThatAreRead) {
  TakeAddon();
  session_.record[addon_slot::kDescription] = "a\r\nb\rc\r";
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find("<description>a\nb\nc\n</description>"), std::string::npos);
}

TEST_F(UpdateRegistry, ValueThatNoXmlFileMayHoldIsNotEntered) {
  const std::string before = Datastore();
  const std::string page = html_->TreeText();
  for (const char* value : {"\x01", "\xFF", "\xED\xA0\x80"}) {
    TakeTransport();
    session_.record[transport_slot::kInstructions] = value;
    registration_.updateRegistryForTransport();
    EXPECT_THAT(log_.entries,
                ElementsAre(Entry(" Kitbay::updateRegistryForTransport", 5,
                                  "Invalid procedure call or argument: the manifest's entry of "
                                  "\"relay\" holds characters that no XML file may hold")));
    log_.entries.clear();
    EXPECT_EQ(Datastore(), before);
    ExpectNothingShown(page);
  }
}

TEST_F(UpdateRegistry, MessagesNameComponentKindAndMainClient) {
  TakeAddon();
  registration_.updateRegistry();
  TakeTransport();
  registration_.updateRegistryForTransport();
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_THAT(desktop_.calls(),
              ElementsAre("ShowMessage [Chess addon has been successfully installed. Please "
                          "restart Tessel Messenger to view the new feature.] [Kitbay] 0",
                          "ShowMessage [Relay messaging service has been successfully installed. "
                          "Please restart Tessel Messenger to view the new feature.] [Kitbay] 0",
                          "ShowMessage [News Channel has been successfully installed. Please "
                          "restart Tessel Messenger to view the new feature.] [Kitbay] 0"));
}

TEST_F(UpdateRegistry, SavedThenStatusClearedThenToldThenTheRowRemoved) {
  rows_.showUpdates("updatedaddons", "Chess", "1", "Plays", 7);
  TakeAddon();
  bool shown = false;
  desktop_.while_asking = [&] {
    shown = true;
    EXPECT_NE(Datastore().find(kAddonEntry), std::string::npos);
    EXPECT_EQ(Status(), "");
    EXPECT_NE(Text("updatedaddons"), "");
  };
  registration_.updateRegistry();
  EXPECT_TRUE(shown);
  EXPECT_EQ(Markup("updatedaddons"), "");
}

TEST_F(UpdateRegistry, RowIsTakenFromTheListOfItsKindAlone) {
  for (const char* list : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
    rows_.showUpdates(list, "Chess", "1", "Text", 7);
  }
  TakeTransport();
  registration_.updateRegistryForTransport();
  EXPECT_EQ(Markup("updatedtransports"), "");
  EXPECT_NE(Markup("updatedaddons"), "");
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(Markup("updatedchannels"), "");
  EXPECT_NE(Markup("updatedaddons"), "");
}

class PresentComponent : public UpdateRegistry {
 protected:
  PresentComponent() { state_.update_in_progress = true; }

  void AddRow(const std::string& list) {
    rows_.fillDivWithUpdates(list, "Chess", "1.0", "Text", 7, false, false);
  }

  /// The version shown in the row, and the number of its buttons.
  std::string Version(const std::string& list) const {
    return Row(list)->ChildNode(0)->ChildNode(1)->InnerText();
  }
  std::string Buttons(const std::string& list) const {
    return Row(list)->ChildNode(1)->ChildNode(0)->ChildNode(1)->InnerHtml();
  }
  platform::HtmlNodeRef Row(const std::string& list) const {
    return html_->ById(list)->ChildNode(0);
  }
};

TEST_F(PresentComponent, AddonStaysAsItIsAndItsRowGetsTheRemoveButton) {
  const std::string before = Datastore();
  AddRow("installedaddons");
  TakeAddon();
  session_.record[kIdSlot] = "notes";
  session_.record[addon_slot::kOffline] = "off";
  registration_.updateRegistry();
  EXPECT_EQ(Datastore(), before);
  EXPECT_THAT(files_.operations(), ElementsAre("Read C:\\Ovalink\\Datastore\\olregistry.xml"));
  EXPECT_EQ(Version("installedaddons"), "Version off");
  EXPECT_THAT(Buttons("installedaddons"), testing::HasSubstr("Remove"));
  EXPECT_THAT(Buttons("installedaddons"), testing::Not(testing::HasSubstr("Update")));
  EXPECT_EQ(Status(), "");
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PresentComponent, TransportStaysAsItIsAndItsRowShowsTheNewVersion) {
  const std::string before = Datastore();
  AddRow("installedtransports");
  TakeTransport();
  session_.record[kIdSlot] = "lan";
  registration_.updateRegistryForTransport();
  EXPECT_EQ(Datastore(), before);
  EXPECT_EQ(Version("installedtransports"), "Version 1.0");
  EXPECT_EQ(Status(), "");
  EXPECT_THAT(desktop_.calls(), IsEmpty());
}

TEST_F(PresentComponent, ChannelGetsItsNewVersionAndNothingElseChanges) {
  AddRow("installedchannels");
  TakeChannel("presence");
  registration_.updateRegistryForChannel();
  EXPECT_EQ(Datastore(), Registry(kOldAddon, kOldTransport,
                                  "<channel id=\"presence\" name=\"Presence\" version=\"2.0\">"
                                  "<core>1</core></channel>"));
  EXPECT_EQ(Version("installedchannels"), "Version 2.0");
  EXPECT_THAT(Buttons("installedchannels"), testing::Not(testing::HasSubstr("Update")));
  EXPECT_EQ(Status(), "");
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PresentComponent, ChannelWithoutAVersionGetsOne) {
  files_.AddFile(kCustomRegistry, "<root><channels><channel id='news'/></channels></root>");
  TakeChannel();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(CustomRegistry(),
            "<root><channels><channel id=\"news\" version=\"2.0\"/></channels></root>");
}

TEST_F(PresentComponent, ChannelThatCannotBeSavedIsLoggedByItsOwnProcedureAndShowsItsOldVersion) {
  const std::string before = Datastore();
  AddRow("installedchannels");
  const std::string page = html_->TreeText();
  TakeChannel("presence");
  files_.FailWritesTo(kDatastore, RuntimeError::kDiskFull);
  EXPECT_FALSE(registration_.updateRegistryForChannel());
  EXPECT_EQ(Datastore(), before);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckNode", 61, "Disk full")));
  ExpectRefusalTold(
      std::string("News Channel could not be entered into ") + kDatastore + ": Disk full.", page);
}

TEST_F(PresentComponent, ChannelWhoseNewVersionIsNoTextKeepsTheOldOne) {
  const std::string before = Datastore();
  TakeChannel("presence");
  session_.record[channel_slot::kVersion] = "2\x01";
  EXPECT_FALSE(registration_.updateRegistryForChannel());
  EXPECT_EQ(Datastore(), before);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::CheckNode", 5,
                                "Invalid procedure call or argument: the version is no text")));
}

TEST_F(PresentComponent, IdIsComparedLetterForLetter) {
  TakeAddon();
  session_.record[kIdSlot] = "Notes";
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find("<addon id=\"Notes\""), std::string::npos);
  EXPECT_EQ(desktop_.calls().size(), 1U);
}

TEST_F(PresentComponent, OnlyTheFirstAttributeIsTheId) {
  files_.AddFile(kDatastore, "<root><addons><addon name='x' id='chess'/></addons></root>");
  TakeAddon();
  registration_.updateRegistry();
  EXPECT_NE(Datastore().find(kAddonEntry), std::string::npos);
}

TEST_F(PresentComponent, ChildWithoutAttributesIsPassedOver) {
  files_.AddFile(kDatastore,
                 "<root><addons>t<!-- c --><addon/><other id=\"chess\"/></addons></root>");
  const std::string before = Datastore();
  TakeAddon();
  registration_.updateRegistry();
  EXPECT_EQ(Datastore(), before);
  EXPECT_THAT(log_.entries, IsEmpty());
}

class FailingUpdate : public UpdateRegistry {};

TEST_F(FailingUpdate, DatastoreWithoutTheListIsNotSavedAndLoggedUnderEachName) {
  files_.AddFile(kDatastore, "<root><other/></root>");
  TakeAddon();
  registration_.updateRegistry();
  TakeTransport();
  registration_.updateRegistryForTransport();
  TakeChannel("presence");
  registration_.updateRegistryForChannel();
  const std::string why = std::string(kNotSet) + ": C:\\Ovalink\\Datastore\\olregistry.xml has no ";
  EXPECT_THAT(
      log_.entries,
      ElementsAre(Entry("Kitbay::updateRegistry ", 91, why + "root//addons"),
                  Entry(" Kitbay::updateRegistryForTransport", 91, why + "root//transports"),
                  Entry("Kitbay::updateRegistryForChannel", 91, why + "/root//channels")));
  EXPECT_EQ(Datastore(), "<root><other/></root>");
  EXPECT_THAT(desktop_.calls(), IsEmpty());
}

TEST_F(FailingUpdate, NothingIsEnteredWithoutAComponent) {
  const std::string before = Datastore();
  session_.record = {};
  registration_.updateRegistry();
  registration_.updateRegistryForTransport();
  registration_.updateRegistryForChannel();
  EXPECT_EQ(Datastore(), before);
  EXPECT_EQ(log_.entries.size(), 3U);
  EXPECT_THAT(desktop_.calls(), IsEmpty());
}

TEST_F(FailingUpdate, FailureAtAnyFileOperationLeavesOldBytesAndIsReported) {
  const std::string before = Datastore();
  const std::string page = html_->TreeText();
  TakeAddon();
  for (std::size_t nth = 1; nth <= 2; ++nth) {
    files_.FailAt(nth, RuntimeError::kDiskFull);
    EXPECT_FALSE(registration_.updateRegistry());
    EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::updateRegistry ", 61, "Disk full")));
    log_.entries.clear();
    EXPECT_EQ(Datastore(), before);
    ExpectRefusalTold(
        std::string("Chess addon could not be entered into ") + kDatastore + ": Disk full.", page);
  }
  registration_.updateRegistry();
  EXPECT_EQ(Datastore(),
            Registry(std::string(kOldAddon) + kAddonEntry, kOldTransport, kOldChannel));
}

TEST_F(FailingUpdate, WhatTheMainClientChangedInTheMeantimeIsKept) {
  TakeAddon();
  const std::string theirs =
      Registry(std::string(kOldAddon) + "<addon id=\"theirs\"/>", kOldTransport, kOldChannel);
  int changes = 0;
  files_.before_replacing = [&] {
    if (++changes == 1) {
      files_.AddFile(kDatastore, theirs);
    }
  };
  EXPECT_TRUE(registration_.updateRegistry());
  EXPECT_EQ(Datastore(), Registry(std::string(kOldAddon) + "<addon id=\"theirs\"/>" + kAddonEntry,
                                  kOldTransport, kOldChannel));
  EXPECT_EQ(changes, 2);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(FailingUpdate, FailureAtAnyOperationOnTheCustomRegistryLeavesNoneOrTheEmptyOneOrTheNewOne) {
  const std::string empty =
      "<root><transports></transports><addons></addons><channels></channels></root> ";
  TakeChannel();
  for (std::size_t nth = 1; nth <= 4; ++nth) {
    fakes::MemoryFiles files;
    files.AddFolder("C:\\Ana\\CustomData");
    DatastoreRegistration registration(
        {log_, files, catalog_files_, settings_, desktop_, rows_, buttons_, sources_, session_});
    files.FailAt(nth, RuntimeError::kDiskFull);
    registration.updateRegistryForChannel();
    EXPECT_EQ(files.Bytes(kCustomRegistry),
              nth <= 2 ? std::nullopt : std::optional<std::string>(empty));
    registration.updateRegistryForChannel();
    EXPECT_NE(files.Bytes(kCustomRegistry)->find(ChannelEntry("news")), std::string::npos);
  }
}

}  // namespace
}  // namespace kitbay::install
