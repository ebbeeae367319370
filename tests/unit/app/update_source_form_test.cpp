// The dialog of update sources as part of the program.
#include "app/update_source_form.h"

#include "fake_program.h"
#include "fakes/fake_preference_window.h"

namespace kitbay::app {
namespace {

using fakes::FakeSuiteObjects;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kSourceFile = "C:\\Ana\\Ovalink\\updatepreference.xml";

class ProgramWithItsDialog : public FakeProgram {
 protected:
  ProgramWithItsDialog() {
    form_.Load();
    form_.WebBrowser1_DocumentComplete();
    form_.cmdPreference_Click();
  }

  void Add(const std::string& url) {
    dialog_window_.Type(url);
    dialog_window_.events()->cmdPrefOk_Click();
  }

  std::vector<std::string>& Requests() { return suite_objects.Find(kDownload)->requests; }

  /// Lets the source that was asked when the page had loaded answer.
  void AnswerFirstSource() {
    files.AddFile("C:\\Ovalink\\Kitbay\\list.xml", "<root/>");
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

  fakes::FakePreferenceWindow dialog_window_;
  UpdateSourceForm preference_form_{log,    files, source_file,  dialog_window_,
                                    window, page,  update_driver};
  MainForm form_{{log,
                  settings,
                  files,
                  desktop,
                  keys,
                  suite_objects,
                  window,
                  window.message_loop(),
                  installation_check,
                  manager_registration,
                  preference_form_,
                  page,
                  page_events,
                  sources,
                  source_file,
                  update_driver,
                  requests,
                  transfer_events,
                  shown,
                  new_components,
                  pending_packages,
                  session}};
};

TEST_F(ProgramWithItsDialog, DirectoriesOpensItOwnedByTheMainWindowWithTheFocusInTheBox) {
  EXPECT_THAT(
      dialog_window_.calls().all(),
      ElementsAre("Load " + std::to_string(window.Handle().value), "EnableRemoveButton false",
                  "AddItem updates.example/list.xml", "Show", "FocusUrlBox"));
  EXPECT_EQ(Log(), Header());
}

TEST_F(ProgramWithItsDialog, DirectoriesAgainBringsItToTheFront) {
  dialog_window_.calls().Clear();
  form_.cmdPreference_Click();
  EXPECT_THAT(dialog_window_.calls().all(), ElementsAre("Show", "FocusUrlBox"));
}

TEST_F(ProgramWithItsDialog, AnAddedSourceIsAskedWhenTheDialogCloses) {
  Add("http://new.example.org/more.xml");
  AnswerFirstSource();
  dialog_window_.events()->cmdPrefClose_Click();
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_THAT(Requests(), ElementsAre(RequestOf("updates.example", "/list.xml"),
                                      RequestOf("new.example.org", "/more.xml")));
  EXPECT_THAT(sources.UpdateSources,
              ElementsAre("updates.example/list.xml", "new.example.org/more.xml"));
}

TEST_F(ProgramWithItsDialog, ClosingItUnchangedAsksNothing) {
  dialog_window_.events()->cmdPrefClose_Click();
  EXPECT_THAT(Requests(), ElementsAre(RequestOf("updates.example", "/list.xml")));
}

TEST_F(ProgramWithItsDialog, TheMainWindowsCloseButtonSavesAndAsksBeforeTheProgramEnds) {
  AnswerFirstSource();
  Add("new.example.org/more.xml");
  form_.CmdClose_Click();
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_EQ(Requests().size(), 2U);
  EXPECT_FALSE(dialog_window_.IsLoaded());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_EQ(Log(), Header());
}

TEST_F(ProgramWithItsDialog, EscapeInTheMainWindowClosesItTooAndSavesWithoutAsking) {
  Add("new.example.org/more.xml");
  form_.Form_KeyDown(27);
  EXPECT_EQ(files.Bytes(kSourceFile), FileOf("new.example.org/more.xml"));
  EXPECT_EQ(Requests().size(), 1U);
  EXPECT_FALSE(dialog_window_.IsLoaded());
  EXPECT_TRUE(window.message_loop().quit());
  EXPECT_THAT(sources.UpdateSources, IsEmpty());
  EXPECT_EQ(Log(), Header());
}

}  // namespace
}  // namespace kitbay::app
