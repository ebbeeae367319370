// The list and the Remove button.
#include "dialog_fixture.h"

namespace kitbay::prefs {
namespace {

class RemovingASource : public DialogTest {
 protected:
  RemovingASource() { OpenWith({"own", "b", "C", "d"}); }
};

TEST_F(RemovingASource, TakesItFromTheFileAtOnceAndFromTheList) {
  SelectAndPressDelete(3);
  EXPECT_EQ(File(), FileOf({"own", "b", "d"}));
  EXPECT_THAT(window_.items(), ElementsAre("own", "b", "d"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RemovingASource, ClearsTheStatusText) {
  Add("no URL");
  SelectAndPressDelete(2);
  EXPECT_EQ(window_.status_text(), "");
}

TEST_F(RemovingASource, ByTheButtonIsTheSame) {
  window_.Click(2);
  window_.PressRemove();
  EXPECT_EQ(File(), FileOf({"own", "C", "d"}));
  EXPECT_THAT(window_.items(), ElementsAre("own", "C", "d"));
  EXPECT_EQ(window_.status_text(), "");
}

TEST_F(RemovingASource, ButtonClearsTheStatusTextAlsoWhenNothingIsRemoved) {
  Add("no URL");
  window_.Select(1);
  window_.events()->Command1_Click();
  EXPECT_EQ(window_.status_text(), "");
  EXPECT_EQ(window_.ItemCount(), 4);
}

TEST_F(RemovingASource, SelectsTheNextSoThatSeveralCanGoInARow) {
  window_.Select(2);
  window_.events()->lstPrefURL_KeyDown(46);
  window_.events()->lstPrefURL_KeyDown(46);
  EXPECT_EQ(File(), FileOf({"own", "d"}));
  window_.events()->lstPrefURL_KeyDown(46);
  window_.events()->lstPrefURL_KeyDown(46);
  EXPECT_EQ(File(), FileOf({"own"}));
  EXPECT_FALSE(window_.remove_enabled());
}

TEST_F(RemovingASource, FirstSourceIsNeverRemoved) {
  const std::string before = File();
  SelectAndPressDelete(1);
  window_.events()->Command1_Click();
  EXPECT_EQ(File(), before);
  EXPECT_EQ(window_.ItemCount(), 4);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RemovingASource, ButtonStaysDisabledWhileTheFirstSourceIsSelected) {
  window_.Click(1);
  EXPECT_FALSE(window_.remove_enabled());
  EXPECT_EQ(window_.SelectedItem(), 1);
}

TEST_F(RemovingASource, ButtonFollowsTheSelectedItem) {
  for (const auto& [position, enabled] :
       std::vector<std::pair<int, bool>>{{2, true}, {1, false}, {4, true}, {0, false}, {3, true}}) {
    window_.Click(position);
    EXPECT_EQ(window_.remove_enabled(), enabled) << "by mouse to " << position;
  }
  for (const auto& [position, enabled] :
       std::vector<std::pair<int, bool>>{{1, false}, {2, true}, {0, false}}) {
    window_.Select(position);
    EXPECT_EQ(window_.remove_enabled(), enabled) << "by keyboard to " << position;
  }
}

TEST_F(RemovingASource, NothingSelectedRemovesNothing) {
  const std::string before = File();
  window_.events()->lstPrefURL_KeyDown(46);
  EXPECT_EQ(File(), before);
  EXPECT_EQ(window_.ItemCount(), 4);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RemovingASource, EveryOtherKeyInTheListIsIgnored) {
  window_.Select(2);
  window_.calls().Clear();
  for (int key = 0; key < 256; ++key) {
    if (key != 46) {
      window_.events()->lstPrefURL_KeyDown(key);
    }
  }
  EXPECT_THAT(window_.calls().all(), IsEmpty());
  EXPECT_EQ(window_.ItemCount(), 4);
}

TEST_F(RemovingASource, OfAnEntryInAnotherLetterCaseWorks) {
  files_.AddFile(kPath, FileOf({"own", "B", "c"}));
  SelectAndPressDelete(2);
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), FileOf({"own"}));
}

TEST_F(RemovingASource, OfTwoEqualOnesTakesTheFirstFromTheFile) {
  files_.AddFile(kPath, FileOf({"own", "x", "B", "b"}));
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), FileOf({"own", "x", "b"}));
}

TEST_F(RemovingASource, ThatNamesTheFirstOnesUrlLeavesTheFirst) {
  files_.AddFile(kPath, FileOf({"B", "c", "b", "d"}));
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), FileOf({"B", "c", "d"}));
}

TEST_F(RemovingASource, LeavesTheRestOfTheFileAsItStands) {
  files_.AddFile(
      kPath,
      "<?xml version=\"1.0\"?>\r\n<!-- mine -->\r\n<root kept=\"1\">\r\n <preferences>\r\n"
      "  <preference url=\"own\"/>\r\n  <!-- b --><preference url=\"b\"/> text\r\n"
      " </preferences>\r\n <other/>\r\n</root>\r\n");
  SelectAndPressDelete(2);
  EXPECT_EQ(File(),
            "<?xml version=\"1.0\"?>\r\n<!-- mine -->\r\n<root kept=\"1\">\r\n <preferences>\r\n"
            "  <preference url=\"own\"/>\r\n  <!-- b --> text\r\n"
            " </preferences>\r\n <other/>\r\n</root>\r\n");
}

TEST_F(RemovingASource, AddedSinceTheDialogOpenedLeavesTheFile) {
  const std::string before = File();
  Add("new.example.com/n.xml");
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  SelectAndPressDelete(5);
  EXPECT_EQ(File(), before);
  EXPECT_THAT(window_.items(), ElementsAre("own", "b", "C", "d"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(RemovingASource, AloneDoesNotTellTheMainWindowAtClosing) {
  SelectAndPressDelete(2);
  window_.events()->cmdPrefClose_Click();
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_EQ(File(), FileOf({"own", "C", "d"}));
  EXPECT_EQ(unsaved_, 0);
}

TEST_F(RemovingASource, AFileThatCannotBeWrittenIsLoggedAndLeavesListAndFile) {
  const std::string before = File();
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), before);
  EXPECT_EQ(window_.ItemCount(), 4);
  EXPECT_EQ(unsaved_, 1);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::lstPrefURL_KeyDown", base::RuntimeError::kDiskFull)));
}

TEST_F(RemovingASource, AFileThatCannotBeReadIsLoggedAndLeavesTheList) {
  files_.SetInUse(kPath);
  SelectAndPressDelete(2);
  EXPECT_EQ(window_.ItemCount(), 4);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::lstPrefURL_KeyDown",
                                              base::RuntimeError::kPermissionDenied)));
}

TEST_F(RemovingASource, AnInvalidFileIsLoggedAndStaysAsItIs) {
  files_.AddFile(kPath, "<root><preferences>");
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), "<root><preferences>");
  EXPECT_EQ(window_.ItemCount(), 4);
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, "Kitbay::lstPrefURL_KeyDown");
  EXPECT_EQ(log_.entries[0].number, -2147024883);
}

TEST_F(RemovingASource, AFileWithoutPreferencesIsLoggedAndStaysAsItIs) {
  files_.AddFile(kPath, "<root/>");
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), "<root/>");
  EXPECT_EQ(window_.ItemCount(), 4);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::lstPrefURL_KeyDown",
                                              base::RuntimeError::kObjectVariableNotSet)));
}

TEST_F(RemovingASource, FailingButtonIsLoggedUnderTheMouseHandler) {
  window_.calls().FailMember("EnableRemoveButton", base::Failure(base::RuntimeError::kOutOfMemory));
  window_.events()->lstPrefURL_MouseUp();
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::lstPrefURL_MouseUp", base::RuntimeError::kOutOfMemory)));
}

}  // namespace
}  // namespace kitbay::prefs
