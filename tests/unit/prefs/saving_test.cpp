// What the dialog leaves when it closes, whoever closed it.
#include "dialog_fixture.h"

namespace kitbay::prefs {
namespace {

constexpr const char* kOne = "one.example.com/1.xml";
constexpr const char* kTwo = "two.example.com/2.xml";

class ClosingTheDialog : public DialogTest {
 protected:
  void Close() { window_.events()->cmdPrefClose_Click(); }
};

TEST_F(ClosingTheDialog, AppendsWhatWasAddedAndTellsTheMainWindowOnce) {
  OpenWith({"own", "b"});
  Add(kOne);
  Add(kTwo);
  Close();
  EXPECT_EQ(File(), FileOf({"own", "b", kOne, kTwo}));
  EXPECT_THAT(told_, ElementsAre(FileOf({"own", "b", kOne, kTwo})));
  EXPECT_FALSE(window_.IsLoaded());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ClosingTheDialog, WithoutAdditionsLeavesTheFileAndTellsNobody) {
  const std::string bytes =
      "<root> <preferences><preference url='own'/></preferences>\r\n</root>\r\n";
  OpenFile(bytes);
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  Close();
  EXPECT_EQ(File(), bytes);
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_EQ(unsaved_, 0);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ClosingTheDialog, WithoutAdditionsAFileThatCannotBeReadLosesNothing) {
  OpenWith({"own"});
  files_.SetInUse(kPath);
  Close();
  EXPECT_EQ(unsaved_, 0);
}

TEST_F(ClosingTheDialog, BySomebodyElseSavesToo) {
  OpenWith({"own"});
  Add(kOne);
  dialog_.Unload();
  EXPECT_EQ(File(), FileOf({"own", kOne}));
  EXPECT_EQ(told_.size(), 1U);
}

TEST_F(ClosingTheDialog, ThatIsNotOpenDoesNothing) {
  files_.AddFile(kPath, FileOf({"own"}));
  dialog_.Unload();
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(ClosingTheDialog, LooksForTheAdditionWithoutRegardToLetterCase) {
  OpenWith({"own"});
  Add(kOne);
  files_.AddFile(kPath, FileOf({"own", "ONE.example.com/1.xml"}));
  Close();
  EXPECT_EQ(File(), FileOf({"own", "ONE.example.com/1.xml"}));
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(ClosingTheDialog, WritesTheUrlAsText) {
  OpenWith({"own"});
  Add("a.com/x.xml?a=<1>&b=\"Ü\"");
  Close();
  EXPECT_EQ(File(),
            "<root><preferences><preference url=\"own\"/><preference "
            "url=\"a.com/x.xml?a=&lt;1>&amp;b=&quot;Ü&quot;\"/></preferences></root>");
}

TEST_F(ClosingTheDialog, LeavesTheRestOfTheFileAsItStands) {
  OpenFile(
      "<?xml version=\"1.0\"?>\r\n<!-- mine -->\r\n<root kept=\"1\">\r\n <preferences>\r\n"
      "  <preference url=\"own\"/>\r\n </preferences>\r\n <other/>\r\n</root>\r\n");
  Add(kOne);
  Close();
  EXPECT_EQ(File(),
            "<?xml version=\"1.0\"?>\r\n<!-- mine -->\r\n<root kept=\"1\">\r\n <preferences>\r\n"
            "  <preference url=\"own\"/>\r\n <preference url=\"one.example.com/1.xml\"/>"
            "</preferences>\r\n <other/>\r\n</root>\r\n");
}

TEST_F(ClosingTheDialog, WhatIsSavedIsWhatTheListIsReadFrom) {
  OpenWith({"own"});
  Add(kOne);
  Close();
  source_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("own", kOne));
}

TEST_F(ClosingTheDialog, WithoutAFileSavesNothing) {
  Open();
  Add(kOne);
  Close();
  EXPECT_EQ(File(), "(no file)");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ClosingTheDialog, AnInvalidFileStaysAsItIs) {
  OpenFile("<root><preferences>");
  Add(kOne);
  Close();
  EXPECT_EQ(File(), "<root><preferences>");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ClosingTheDialog, AFileWithoutPreferencesIsLoggedAndStaysAsItIs) {
  OpenFile("<root/>");
  Add(kOne);
  Close();
  EXPECT_EQ(File(), "<root/>");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::SavePreference",
                                              base::RuntimeError::kObjectVariableNotSet)));
}

TEST_F(ClosingTheDialog, AFileThatCannotBeWrittenIsLoggedAndStaysAsItIs) {
  OpenWith({"own"});
  const std::string before = File();
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  Add(kOne);
  Close();
  EXPECT_EQ(File(), before);
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_EQ(unsaved_, 1);
  EXPECT_FALSE(window_.IsLoaded());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::SavePreference", base::RuntimeError::kDiskFull)));
}

TEST_F(ClosingTheDialog, AFaultAfterTheFirstAdditionKeepsThatOneAndReports) {
  OpenWith({"own"});
  Add(kOne);
  Add(kTwo);
  // Three reads, and the replacement after the second; then the second replacement.
  files_.FailAt(5, base::RuntimeError::kDiskFull);
  Close();
  EXPECT_EQ(File(), FileOf({"own", kOne}));
  EXPECT_THAT(told_, ElementsAre(FileOf({"own", kOne})));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::SavePreference", base::RuntimeError::kDiskFull)));
}

// Each step on the file fails in turn; the third replaces it with the first addition.
TEST_F(ClosingTheDialog, AFaultAtAnyStepLeavesAWholeFile) {
  for (std::size_t step = 1; step <= 5; ++step) {
    OpenWith({"own"});
    Add(kOne);
    Add(kTwo);
    files_.FailAt(step, base::RuntimeError::kPathFileAccessError);
    Close();
    EXPECT_EQ(File(), step <= 3 ? FileOf({"own"}) : FileOf({"own", kOne})) << step;
  }
}

TEST_F(ClosingTheDialog, FailingWindowIsLoggedUnderTheHandler) {
  OpenWith({"own"});
  window_.calls().FailMember("Unload", base::Failure(base::RuntimeError::kOutOfMemory));
  Close();
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::cmdPrefClose_Click", base::RuntimeError::kOutOfMemory)));
}

}  // namespace
}  // namespace kitbay::prefs
