// From the click on Remove to the registry files.
#include "install/removal.h"

#include "flow_fixture.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The name of each kind in a question to the user, and in a registry file.
struct KindWords {
  const char* kind;
  const char* list;
  const char* element;
};
constexpr base::PerKind<KindWords> kWords = {
    .addon = {.kind = "Addon", .list = "addons", .element = "addon"},
    .transport = {.kind = "", .list = "transports", .element = "transport"},
    .channel = {.kind = "Channel", .list = "channels", .element = "channel"}};

class Remove : public FlowTest {
 protected:
  Remove() {
    SetFile(kDatastore, Registry("notes", "Notes"));
    SetFile(kCustomRegistry, Registry("notes", "Notes"));
  }

  void SetFile(const std::string& path, const std::string& text) { files_.AddFile(path, text); }
  std::string File(const std::string& path) const { return files_.Bytes(path).value_or("(none)"); }

  /// A registry file with one entry of each kind, with that id and name.
  static std::string Registry(const std::string& id, const std::string& name) {
    std::string text = "<root>";
    for (const ComponentKind kind : base::kComponentKinds) {
      text += std::string("<") + kWords[kind].list + "><" + kWords[kind].element + " id=\"" + id +
              "\" name=\"" + name + "\"><core>0</core></" + kWords[kind].element + "></" +
              kWords[kind].list + ">";
    }
    return text + "</root>";
  }

  /// The same without the entry of `kind`.
  static std::string RegistryWithout(ComponentKind kind) {
    std::string text = Registry("notes", "Notes");
    const std::string list = kWords[kind].list;
    const std::size_t begin = text.find("<" + list + ">");
    const std::string end = "</" + list + ">";
    return text.substr(0, begin) + "<" + list + "/>" + text.substr(text.find(end) + end.size());
  }

  /// Clicks Remove in the row at that position.
  void Press(ComponentKind kind, int place = 0) {
    removal_.RemoveAddon(ClickOn(kind, place, kRemove));
  }

  std::vector<std::string> Writes() const {
    std::vector<std::string> writes;
    for (const std::string& operation : files_.operations()) {
      if (!operation.starts_with("Read ") && !operation.starts_with("Exists ")) {
        writes.push_back(operation);
      }
    }
    return writes;
  }

  Removal removal_{
      {log_, settings_, files_, desktop_, page_, state_, rows_, main_client_, session_}};
};

class RemoveEachKind : public Remove, public ::testing::WithParamInterface<ComponentKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, RemoveEachKind, ::testing::ValuesIn(base::kComponentKinds),
                         [](const auto& info) { return kWords[info.param].element; });

TEST_P(RemoveEachKind, WithARunningClientRowAndEntriesGo) {
  StartClient();
  AddInstalled(GetParam(), "Notes", 1);
  Press(GetParam());
  const std::string name = std::string("Notes ") + kWords[GetParam()].kind;
  EXPECT_THAT(desktop_.calls(),
              ElementsAre(kFindClient,
                          "ShowMessage [To Remove " + name +
                              " Tessel Messenger  needs to be shut down. Please restart Tessel "
                              "Messenger for the changes to take effect.] [Kitbay] 1",
                          CloseClient()));
  EXPECT_EQ(RowCount(view::kInstalledContainers[GetParam()]), 0);
  EXPECT_EQ(File(kDatastore), RegistryWithout(GetParam()));
  EXPECT_EQ(File(kCustomRegistry), RegistryWithout(GetParam()));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(RemoveEachKind, WithoutARunningClientRowAndEntriesGoAsWell) {
  AddInstalled(GetParam(), "Notes", 1);
  Press(GetParam());
  EXPECT_THAT(desktop_.calls(),
              ElementsAre(kFindClient,
                          std::string("ShowMessage [Are you sure you want to Remove the Notes ") +
                              kWords[GetParam()].kind + ".] [Kitbay] 1"));
  EXPECT_EQ(RowCount(view::kInstalledContainers[GetParam()]), 0);
  EXPECT_EQ(File(kDatastore), RegistryWithout(GetParam()));
  EXPECT_EQ(File(kCustomRegistry), RegistryWithout(GetParam()));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(RemoveEachKind, CancelRemovesNothingWhetherOrNotTheClientRuns) {
  for (const bool is_running : {false, true}) {
    if (is_running) {
      StartClient();
    }
    AddInstalled(GetParam(), "Notes", 1);
    desktop_.AddAnswer(platform::kAnswerCancel);
    Press(GetParam());
  }
  EXPECT_EQ(RowCount(view::kInstalledContainers[GetParam()]), 2);
  EXPECT_EQ(File(kDatastore), Registry("notes", "Notes"));
  EXPECT_EQ(File(kCustomRegistry), Registry("notes", "Notes"));
  EXPECT_TRUE(desktop_.HasWindow(client_window_));
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_P(RemoveEachKind, ARemovalNeverStartsTheClientAgain) {
  StartClient();
  AddInstalled(GetParam(), "Notes", 1);
  Press(GetParam());
  EXPECT_FALSE(session_.restart);
  EXPECT_EQ(desktop_.calls().back(), CloseClient());
}

TEST_F(Remove, WithARunningClientTheRowGoesBeforeTheEntries) {
  StartClient();
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  files_.FailWritesTo(kDatastore, base::RuntimeError::kDiskFull);
  desktop_.while_asking = [&] {
    html_->FailMember("RemoveNode", base::Failure(438, "no such member"));
  };
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::RemoveNode ", 438, "no such member"),
                                        Entry("Kitbay::uninstall", 61, "Disk full")));
  EXPECT_EQ(File(kCustomRegistry), RegistryWithout(ComponentKind::kAddon));
}

TEST_F(Remove, WithoutARunningClientTheEntriesGoBeforeTheRow) {
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  files_.FailWritesTo(kDatastore, base::RuntimeError::kDiskFull);
  desktop_.while_asking = [&] {
    html_->FailMember("RemoveNode", base::Failure(438, "no such member"));
  };
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::uninstall", 61, "Disk full"),
                                        Entry("Kitbay::RemoveNode ", 438, "no such member")));
  EXPECT_EQ(File(kDatastore), Registry("notes", "Notes"));
}

TEST_F(Remove, TheDatastoreComesBeforeTheCustomRegistry) {
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_THAT(Writes(), ElementsAre(std::string("Replace ") + kDatastore,
                                    std::string("Replace ") + kCustomRegistry));
}

TEST_F(Remove, OnlyTheClickedRowGoes) {
  AddInstalled(ComponentKind::kAddon, "Mail", 1);
  AddInstalled(ComponentKind::kAddon, "Notes", 2);
  AddInstalled(ComponentKind::kChannel, "Sky", 2);
  AddNew(ComponentKind::kAddon, "News", 2);
  Press(ComponentKind::kAddon, 1);
  EXPECT_EQ(RowCount("installedaddons"), 1);
  EXPECT_EQ(Row("installedaddons")->Child(0)->InnerText(), "MailVersion 1.0.0.0");
  EXPECT_EQ(RowCount("installedchannels"), 1);
  EXPECT_EQ(RowCount("updatedaddons"), 1);
}

TEST_F(Remove, TheEntryIsFoundByItsNameWithoutLetterCase) {
  SetFile(kDatastore,
          "<root><addons><addon id=\"notes\" name=\"Mail\"/><addon id=\"x\" name=\"nOTES\"/>"
          "<addon id=\"y\" name=\"Notes\"/></addons></root>");
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_EQ(File(kDatastore),
            "<root><addons><addon id=\"notes\" name=\"Mail\"/><addon id=\"y\" name=\"Notes\"/>"
            "</addons></root>");
}

TEST_F(Remove, WhatElseTheFileHoldsStays) {
  SetFile(kDatastore,
          "<?xml version=\"1.0\"?>\r\n<!-- ours -->\r\n<root kept=\"1\">\r\n  <unknown>  </unknown>"
          "\r\n  <addons>\r\n    <!-- one --><addon id=\"a\" name=\"A\"/><addon id=\"notes\" "
          "name=\"Notes\"/>\r\n  </addons>\r\n</root>\r\n");
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_EQ(File(kDatastore),
            "<?xml version=\"1.0\"?>\r\n<!-- ours -->\r\n<root kept=\"1\">\r\n  <unknown>  "
            "</unknown>\r\n  <addons>\r\n    <!-- one --><addon id=\"a\" name=\"A\"/>\r\n  "
            "</addons>\r\n</root>\r\n");
}

TEST_F(Remove, AFileWithoutTheEntryIsNotRewritten) {
  SetFile(kDatastore, Registry("mail", "Mail"));
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_THAT(Writes(), ElementsAre(std::string("Replace ") + kCustomRegistry));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(RemoveEachKind, AnEntryThatNoFileHasIsLoggedOnce) {
  SetFile(kDatastore, Registry("mail", "Mail"));
  for (const char* custom_data : {"C:\\Ana\\Nothing", "C:\\Ana\\CustomData"}) {
    settings_.CustomDataFolder = custom_data;
    SetFile(kCustomRegistry, Registry("mail", "Mail"));
    AddInstalled(GetParam(), "Notes", 1);
    log_.entries.clear();
    Press(GetParam());
    EXPECT_THAT(
        log_.entries,
        ElementsAre(Entry("Kitbay::uninstall", 91,
                          std::string(kNotSet) + ": no registry file has an entry of \"Notes\"")));
  }
  EXPECT_THAT(Writes(), IsEmpty());
  EXPECT_EQ(RowCount(view::kInstalledContainers[GetParam()]), 0);
}

TEST_F(Remove, ACustomRegistryThatDoesNotExistIsPassedOver) {
  settings_.CustomDataFolder = "C:\\Ana\\Nothing";
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_EQ(File(kDatastore), RegistryWithout(ComponentKind::kAddon));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Remove, ADatastoreThatDoesNotExistIsLoggedAndTheCustomRegistryIsStillChanged) {
  settings_.InstallFolder = "C:\\Elsewhere";
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_EQ(File(kCustomRegistry), RegistryWithout(ComponentKind::kAddon));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::uninstall", 76, "Path not found")));
}

TEST_F(Remove, AnEntryWithoutANameBeforeTheMatchIsLogged) {
  SetFile(kDatastore,
          "<root><addons><addon id=\"a\"/><addon id=\"notes\" name=\"Notes\"/></addons>"
          "</root>");
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::uninstall", 91, kNotSet)));
  EXPECT_THAT(Writes(), ElementsAre(std::string("Replace ") + kCustomRegistry));
}

TEST_F(Remove, TheComponentsOwnFilesStay) {
  files_.AddFile("C:\\Ovalink\\addons\\notes\\notes.dll", "MZ");
  files_.AddFile("C:\\Ana\\CustomData\\notes\\notes.dll", "MZ");
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_TRUE(files_.IsFile("C:\\Ovalink\\addons\\notes\\notes.dll"));
  EXPECT_TRUE(files_.IsFile("C:\\Ana\\CustomData\\notes\\notes.dll"));
}

TEST_F(Remove, ARowWithoutVersionIsAnErrorAndNobodyIsAsked) {
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Row("installedaddons")->Child(0)->SetInnerText("Notes");
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::RemoveAddon", 5, "Invalid procedure call or argument")));
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(Remove, ARunTimeErrorOfTheQuestionIsLogged) {
  desktop_.search_failure = base::Failure(-2147467259, "Unspecified error");
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  Press(ComponentKind::kAddon);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::checkExe", -2147467259, "Unspecified error")));
  EXPECT_EQ(RowCount("installedaddons"), 1);
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(Remove, AnInstallationThatEndsDuringTheQuestionDoesNotChangeWhichRowGoes) {
  AddInstalled(ComponentKind::kAddon, "Mail", 1);
  AddInstalled(ComponentKind::kAddon, "Notes", 2);
  desktop_.while_asking = [&] {
    state_.current_row_id = "1";
    state_.current_row_name = "Mail";
  };
  Press(ComponentKind::kAddon, 1);
  ASSERT_EQ(RowCount("installedaddons"), 1);
  EXPECT_EQ(Row("installedaddons")->Child(0)->InnerText(), "MailVersion 1.0.0.0");
}

TEST_F(Remove, AListFilledAgainDuringTheQuestionLosesTheComponentsOwnRow) {
  AddInstalled(ComponentKind::kAddon, "Notes", 1);
  AddInstalled(ComponentKind::kAddon, "Mail", 2);
  desktop_.while_asking = [&] {
    rows_.FillEmptyDivHeader("installedaddons", "");
    AddInstalled(ComponentKind::kAddon, "Mail", 1);
    AddInstalled(ComponentKind::kAddon, "Notes", 2);
  };
  Press(ComponentKind::kAddon, 0);
  ASSERT_EQ(RowCount("installedaddons"), 1);
  EXPECT_EQ(Row("installedaddons")->Child(0)->InnerText(), "MailVersion 1.0.0.0");
}

TEST_F(Remove, checkExeTellsWhetherTheComponentWasToBeRemoved) {
  EXPECT_TRUE(removal_.checkExe(ComponentKind::kAddon, "Notes"));
  StartClient();
  EXPECT_TRUE(removal_.checkExe(ComponentKind::kAddon, "Notes"));
  StartClient();
  desktop_.AddAnswer(platform::kAnswerCancel);
  EXPECT_FALSE(removal_.checkExe(ComponentKind::kAddon, "Notes"));
}

}  // namespace
}  // namespace kitbay::install
