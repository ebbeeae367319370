// The dialog of update sources as part of the program.
#include "app/update_source_form.h"

#include "fake_program.h"

namespace kitbay::app {
namespace {

using fakes::FakeSuiteObjects;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kSourceFile = "C:\\Ana\\Ovalink\\updatepreference.xml";

class ProgramWithItsDialog : public FakeProgram {
 protected:
  ProgramWithItsDialog() {
    StartAndLoadPage();
    window.events()->cmdPreference_Click();
  }

  void Add(const std::string& url) {
    preference_window.Type(url);
    preference_window.events()->cmdPrefOk_Click();
  }

  std::vector<std::string>& Requests() { return suite_objects.Find(kDownload)->requests; }

  /// Makes the source that was contacted after the page had loaded answer.
  void AnswerFirstSource() {
    files.AddFile("C:\\Ovalink\\Kitbay\\list.xml", "<components/>");
    suite_objects.Find(kDownload)->receiver->Message("/list.xml", "Received-Length", "true");
  }

  static auto RequestOf(const std::string& server, const std::string& path) {
    return AllOf(HasSubstr("<server>" + server + "</server>"),
                 HasSubstr("<filetodownload>" + path + "</filetodownload>"));
  }

  static std::string FileOf(const std::string& second) {
    return "<root><preferences><preference url=\"updates.example/list.xml\"/><preference url=\"" +
           second + "\"/></preferences></root>";
  }
};

TEST_F(ProgramWithItsDialog, DirectoriesOpensItOwnedByTheMainWindowWithTheFocusInTheBox) {
  EXPECT_THAT(
      preference_window.calls().all(),
      ElementsAre("Load " + std::to_string(window.Handle().value), "EnableRemoveButton false",
                  "AddItem updates.example/list.xml", "Show", "FocusUrlBox"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(ProgramWithItsDialog, SaysThatTwoSourcesReplaceEachOther) {
  Add("two.example.com/List.xml");
  EXPECT_THAT(
      desktop.calls(),
      Contains("ShowMessage [two.example.com/List.xml and updates.example/list.xml have the "
               "same file name. What one of them offers replaces what the other offers.] "
               "[Kitbay] 0"));
}

TEST_F(ProgramWithItsDialog, DirectoriesAgainBringsItToTheFront) {
  preference_window.calls().Clear();
  window.events()->cmdPreference_Click();
  EXPECT_THAT(preference_window.calls().all(), ElementsAre("Show", "FocusUrlBox"));
}

TEST_F(ProgramWithItsDialog, AnAddedSourceIsAskedWhenTheDialogCloses) {
  Add("http://new.example.org/more.xml");
  AnswerFirstSource();
  preference_window.events()->cmdPrefClose_Click();
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_THAT(Requests(), ElementsAre(RequestOf("updates.example", "/list.xml"),
                                      RequestOf("new.example.org", "/more.xml")));
  EXPECT_THAT(page.sources.UpdateSources,
              ElementsAre("updates.example/list.xml", "new.example.org/more.xml"));
}

TEST_F(ProgramWithItsDialog, ClosingItUnchangedAsksNothing) {
  preference_window.events()->cmdPrefClose_Click();
  EXPECT_THAT(Requests(), ElementsAre(RequestOf("updates.example", "/list.xml")));
}

TEST_F(ProgramWithItsDialog, TheMainWindowsCloseButtonSavesAndAsksBeforeTheProgramEnds) {
  AnswerFirstSource();
  Add("new.example.org/more.xml");
  window.events()->CmdClose_Click();
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_EQ(Requests().size(), 2U);
  EXPECT_FALSE(preference_window.IsLoaded());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_EQ(Log(), Header());
}

TEST_F(ProgramWithItsDialog, EscapeInTheMainWindowClosesItTooAndSavesWithoutAsking) {
  Add("new.example.org/more.xml");
  window.events()->Form_KeyDown(27);
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_EQ(Requests().size(), 1U);
  EXPECT_FALSE(preference_window.IsLoaded());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_THAT(page.sources.UpdateSources, IsEmpty());
  EXPECT_EQ(Log(), Header());
}

}  // namespace
}  // namespace kitbay::app
