// The text box and the Add button.
#include "dialog_fixture.h"

namespace kitbay::prefs {
namespace {

constexpr const char* kInvalid = "Please enter valid URL.";
constexpr const char* kDuplicate = "You have same URL added in your preference.";
constexpr const char* kAdded =
    "The URL is saved. You will start getting updates from this location.";

class AddingASource : public DialogTest {
 protected:
  AddingASource() { OpenWith({"first.example.com/Own.xml", "b.example.org/B.xml"}); }
};

TEST_F(AddingASource, AppendsItAndClearsTheBoxForTheNext) {
  Add("new.example.net/n.xml");
  EXPECT_THAT(window_.calls().all(),
              ElementsAre("SetStatusText", "AddItem new.example.net/n.xml", "FocusAddButton",
                          "SetUrlText", std::string("SetStatusText ") + kAdded, "FocusUrlBox"));
  EXPECT_THAT(window_.items(), ElementsAre("first.example.com/Own.xml", "b.example.org/B.xml",
                                           "new.example.net/n.xml"));
  EXPECT_EQ(window_.UrlText(), "");
  EXPECT_EQ(window_.status_text(), kAdded);
  EXPECT_EQ(window_.focus(), "txtPrefUrl");
}

TEST_F(AddingASource, ReportsAnotherOneWhoseListHasTheSameFileName) {
  Add("new.example.net/lists/b.xml");
  EXPECT_THAT(same_names_, ElementsAre("new.example.net/lists/b.xml b.example.org/B.xml"));
  EXPECT_EQ(window_.status_text(), kAdded);
  EXPECT_EQ(window_.items().back(), "new.example.net/lists/b.xml");
}

TEST_F(AddingASource, ReportsNothingForOtherFileNames) {
  Add("new.example.net/bb.xml");
  Add("b.example.org/B.xml");
  EXPECT_THAT(same_names_, IsEmpty());
}

TEST_F(AddingASource, LeavesTheFileUntilTheDialogCloses) {
  const std::string before = File();
  Add("new.example.net/n.xml");
  EXPECT_EQ(File(), before);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(AddingASource, KeepsOnlyThePartFromWwwOnOfAUrlWithSchemeAndWwwHost) {
  Add("http://www.example.com/n.xml");
  EXPECT_EQ(window_.items().back(), "www.example.com/n.xml");
}

TEST_F(AddingASource, KeepsThePartAfterTheSchemeOfAnyOtherHost) {
  Add("http://new.example.com/n.xml");
  EXPECT_EQ(window_.items().back(), "new.example.com/n.xml");
}

TEST_F(AddingASource, EnterInTheBoxAddsLikeTheButton) {
  window_.Type("new.example.net/n.xml");
  window_.events()->txtPrefUrl_KeyDown(13);
  EXPECT_THAT(window_.calls().all(),
              ElementsAre("AddItem new.example.net/n.xml", "FocusAddButton", "SetUrlText",
                          std::string("SetStatusText ") + kAdded, "FocusUrlBox"));
}

TEST_F(AddingASource, EveryOtherKeyInTheBoxIsIgnored) {
  window_.Type("new.example.net/n.xml");
  for (int key = 0; key < 256; ++key) {
    if (key != 13) {
      window_.events()->txtPrefUrl_KeyDown(key);
    }
  }
  EXPECT_THAT(window_.calls().all(), IsEmpty());
}

class RefusedUrl : public AddingASource, public testing::WithParamInterface<const char*> {};

TEST_P(RefusedUrl, IsReportedAndStaysInTheBox) {
  Add(GetParam());
  EXPECT_THAT(
      window_.calls().all(),
      ElementsAre("SetStatusText", std::string("SetStatusText ") + kInvalid, "FocusUrlBox"));
  EXPECT_EQ(window_.UrlText(), GetParam());
  EXPECT_EQ(window_.ItemCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(WithoutXmlOrDomainEnding, RefusedUrl,
                         testing::Values("", "www.example.com", "http://www.example.com/list.txt",
                                         "http://localhost/list.xml", "example.info/list.xml"));

// The ending is before the "www", so it is no longer there when the rest is checked.
INSTANTIATE_TEST_SUITE_P(WithoutADomainEndingAfterWww, RefusedUrl,
                         testing::Values("http://example.com/www/list.xml"));

class DuplicateUrl : public AddingASource, public testing::WithParamInterface<const char*> {};

TEST_P(DuplicateUrl, IsReportedAndRemovedFromTheBox) {
  Add(GetParam());
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetStatusText", "FocusAddButton", "SetUrlText",
                                                 std::string("SetStatusText ") + kDuplicate));
  EXPECT_EQ(window_.ItemCount(), 2);
  EXPECT_EQ(window_.UrlText(), "");
  EXPECT_EQ(window_.focus(), "cmdPrefOk");
}

INSTANTIATE_TEST_SUITE_P(OfAnyItem, DuplicateUrl,
                         testing::Values("first.example.com/Own.xml", "b.example.org/B.xml"));
INSTANTIATE_TEST_SUITE_P(InAnotherLetterCase, DuplicateUrl,
                         testing::Values("FIRST.example.com/own.xml", "B.Example.org/b.xml"));
INSTANTIATE_TEST_SUITE_P(WithAScheme, DuplicateUrl,
                         testing::Values("http://b.example.org/B.xml",
                                         "http://B.EXAMPLE.org/B.xml"));

TEST_F(AddingASource, TwiceIsADuplicateBeforeItIsInTheFile) {
  Add("new.example.net/n.xml");
  Add("NEW.example.net/n.xml");
  EXPECT_EQ(window_.ItemCount(), 3);
  EXPECT_EQ(window_.status_text(), kDuplicate);
}

TEST_F(AddingASource, LettersBeyondAToZCountAsTheyStand) {
  Add("\u00C4.example.com/a.xml");
  Add("\u00E4.example.com/a.xml");
  EXPECT_EQ(window_.ItemCount(), 4);
}

TEST_F(AddingASource, FailingWindowIsLoggedUnderTheProcedure) {
  window_.calls().FailMember("AddItem", base::Failure(base::RuntimeError::kOutOfMemory));
  Add("new.example.net/n.xml");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::AddURL", base::RuntimeError::kOutOfMemory)));
  EXPECT_EQ(window_.UrlText(), "new.example.net/n.xml");
}

TEST_F(AddingASource, FailingStatusBarIsLoggedUnderTheHandler) {
  window_.calls().FailMember("SetStatusText", base::Failure(base::RuntimeError::kOutOfMemory));
  Add("new.example.net/n.xml");
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::cmdPrefOK_Click", base::RuntimeError::kOutOfMemory)));
}

}  // namespace
}  // namespace kitbay::prefs
