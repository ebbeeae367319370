// What the dialog shows when it opens.
#include "dialog_fixture.h"

namespace kitbay::prefs {
namespace {

class OpeningTheDialog : public DialogTest {};

TEST_F(OpeningTheDialog, ListsTheSourcesInFileOrder) {
  files_.AddFile(kPath, FileOf({"one.example.com/a.xml", "two.example.com/b.xml",
                                "one.example.com/a.xml", "Zwölf.example.com/c.xml"}));
  Open();
  EXPECT_THAT(window_.items(), ElementsAre("one.example.com/a.xml", "two.example.com/b.xml",
                                           "one.example.com/a.xml", "Zwölf.example.com/c.xml"));
  EXPECT_THAT(window_.calls().all(),
              ElementsAre("Load 65602", "EnableRemoveButton false", "AddItem one.example.com/a.xml",
                          "AddItem two.example.com/b.xml", "AddItem one.example.com/a.xml",
                          "AddItem Zwölf.example.com/c.xml", "Show"));
  EXPECT_FALSE(window_.remove_enabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(OpeningTheDialog, ListsTheEmptyFirstSourceOfAFreshUser) {
  OpenWith({""});
  EXPECT_THAT(window_.items(), ElementsAre(""));
}

TEST_F(OpeningTheDialog, ListsEachElementByItsFirstAttribute) {
  OpenFile(
      "<root>\r\n <preferences>\r\n <!-- mine -->\r\n <preference href='a' url='b'/>\r\n"
      " <other name='c'/> text <preference url='&lt;d&gt;'/>\r\n </preferences>\r\n</root>");
  EXPECT_THAT(window_.items(), ElementsAre("a", "c", "<d>"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(OpeningTheDialog, ListsNothingWithoutAFile) {
  Open();
  EXPECT_THAT(window_.items(), IsEmpty());
  EXPECT_TRUE(window_.shown());
  EXPECT_THAT(log_.entries, IsEmpty());
}

class UselessFile : public DialogTest, public testing::WithParamInterface<const char*> {};

TEST_P(UselessFile, ListsNothing) {
  OpenFile(GetParam());
  EXPECT_THAT(window_.items(), IsEmpty());
  EXPECT_TRUE(window_.shown());
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, UselessFile,
                         testing::Values("", "<root><preferences>", "<root/>",
                                         "<preferences><preference url='a'/></preferences>",
                                         "<root><a><preferences><b url='c'/></preferences></a>"
                                         "</root>",
                                         "<root><preferences/></root>"));

TEST_F(OpeningTheDialog, ListsUpToASourceWithoutAUrlAndLogsIt) {
  OpenFile("<root><preferences><a url='1'/><b/><c url='3'/></preferences></root>");
  EXPECT_THAT(window_.items(), ElementsAre("1"));
  EXPECT_TRUE(window_.shown());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::Form_Load", base::RuntimeError::kObjectVariableNotSet)));
}

TEST_F(OpeningTheDialog, AgainOnlyBringsItToTheFrontAsItIs) {
  OpenWith({"first"});
  window_.Type("half a URL");
  files_.AddFile(kPath, FileOf({"first", "second"}));
  Open();
  EXPECT_THAT(window_.calls().all(), ElementsAre("Show"));
  EXPECT_THAT(window_.items(), ElementsAre("first"));
  EXPECT_EQ(window_.UrlText(), "half a URL");
}

TEST_F(OpeningTheDialog, AfterItWasClosedReadsTheFileAgain) {
  OpenWith({"first"});
  window_.Type("half a URL");
  window_.events()->cmdPrefClose_Click();
  files_.AddFile(kPath, FileOf({"first", "second"}));
  Open();
  EXPECT_THAT(window_.items(), ElementsAre("first", "second"));
  EXPECT_EQ(window_.UrlText(), "");
}

TEST_F(OpeningTheDialog, ReportsThatThereCanBeNoWindow) {
  window_.calls().FailMember("Load", base::Failure(base::RuntimeError::kOutOfMemory));
  EXPECT_THROW(Open(), base::Failure);
  EXPECT_FALSE(window_.IsLoaded());
}

TEST_F(OpeningTheDialog, FileLiesInTheParentOfTheUsersFolder) {
  settings_.CustomDataFolder = "D:\\Elsewhere\\Ovalink\\CustomData";
  files_.AddFile("D:\\Elsewhere\\Ovalink\\updatepreference.xml", FileOf({"there"}));
  Open();
  EXPECT_THAT(window_.items(), ElementsAre("there"));
}

TEST_F(OpeningTheDialog, GivesTheTextBoxTheFocusWhenAsked) {
  OpenWith({"first"});
  dialog_.FocusUrlBox();
  EXPECT_EQ(window_.focus(), "txtPrefUrl");
}

}  // namespace
}  // namespace kitbay::prefs
