// Sources that sign their manifests: a URL, "#" and a key.
#include "dialog_fixture.h"
#include "prefs/source_url.h"

namespace kitbay::prefs {
namespace {

const std::string kKey = "00112233445566778899aabbccddeeff00112233445566778899aabbccddeeff";

class SigningSource : public DialogTest {
 protected:
  SigningSource() { OpenWith({"first.example.com/Own.xml"}); }

  static std::string FileWith(const std::string& further) {
    return "<root><preferences><preference url=\"first.example.com/Own.xml\"/>" + further +
           "</preferences></root>";
  }
};

TEST_F(SigningSource, IsAddedWithItsKeyAndMarkedInTheList) {
  Add("http://new.example.net/n.xml#" + kKey);
  EXPECT_THAT(window_.items(),
              ElementsAre("first.example.com/Own.xml", "new.example.net/n.xml (signed)"));
  dialog_.Unload();
  EXPECT_EQ(File(), FileWith("<preference url=\"new.example.net/n.xml\" key=\"" + kKey + "\"/>"));
  EXPECT_EQ(told_.size(), 1U);
}

TEST_F(SigningSource, IsMarkedWhenTheDialogOpens) {
  dialog_.Unload();
  OpenFile(FileWith("<preference url='n.org/n.xml' key='" + kKey + "' serial='3'/>"));
  EXPECT_THAT(window_.items(), ElementsAre("first.example.com/Own.xml", "n.org/n.xml (signed)"));
}

TEST_F(SigningSource, MayHaveItsKeyInCapitalsAndBlanksAround) {
  Add("n.org/n.xml# " + std::string(kKey).replace(20, 4, "AABB") + " ");
  EXPECT_EQ(window_.items().size(), 2U);
  dialog_.Unload();
  EXPECT_EQ(File(), FileWith("<preference url=\"n.org/n.xml\" key=\"" + kKey + "\"/>"));
}

TEST_F(SigningSource, IsNotTakenWithoutAKeyWhereTheKeyIsMistyped) {
  for (const std::string& typed : {std::string("n.org/n.xml#"), "n.org/n.xml#" + kKey.substr(1),
                                   "n.org/n.xml#" + kKey + "0", "n.org/n.xml#g" + kKey.substr(1)}) {
    Add(typed);
    EXPECT_EQ(window_.status_text(), "Please enter valid URL.") << typed;
  }
  EXPECT_EQ(window_.items().size(), 1U);
}

TEST_F(SigningSource, MayHaveTheMarkInAFolderOfItsUrl) {
  Add("n.org/list#1/n.xml");
  EXPECT_EQ(window_.items().back(), "n.org/list#1/n.xml");
}

TEST_F(SigningSource, IsADuplicateOfItsUrlWithoutTheKey) {
  Add("n.org/n.xml");
  Add("N.org/n.xml#" + kKey);
  EXPECT_EQ(window_.status_text(), "You have same URL added in your preference.");
  EXPECT_THAT(window_.items(), ElementsAre("first.example.com/Own.xml", "n.org/n.xml"));
}

// Otherwise typing the URL again without the key would remove the key.
TEST_F(SigningSource, KeepsItsKeyWhenItsUrlIsTypedWithoutOne) {
  Add("n.org/n.xml#" + kKey);
  Add("n.org/n.xml");
  EXPECT_EQ(window_.status_text(), "You have same URL added in your preference.");
  dialog_.Unload();
  EXPECT_EQ(File(), FileWith("<preference url=\"n.org/n.xml\" key=\"" + kKey + "\"/>"));
}

TEST_F(SigningSource, IsRemovedWithItsKey) {
  dialog_.Unload();
  OpenFile(FileWith("<preference url='n.org/n.xml' key='" + kKey +
                    "' serial='3'/><preference url='o.org/o.xml'/>"));
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), FileWith("<preference url=\"o.org/o.xml\"/>"));
  EXPECT_THAT(window_.items(), ElementsAre("first.example.com/Own.xml", "o.org/o.xml"));
  SelectAndPressDelete(2);
  EXPECT_EQ(File(), FileWith(""));
}

TEST_F(SigningSource, GivesItsKeyToTheEntryThatAnotherProgramMade) {
  Add("n.org/n.xml#" + kKey);
  files_.AddFile(kPath, FileWith("<preference url='n.org/n.xml'/>"));
  dialog_.Unload();
  EXPECT_EQ(File(), FileWith("<preference url=\"n.org/n.xml\" key=\"" + kKey + "\"/>"));
}

TEST_F(SigningSource, TakesNoKeyFromTheEntryThatAnotherProgramMade) {
  Add("n.org/n.xml#" + kKey);
  const std::string file = FileWith("<preference url='n.org/n.xml' key='other'/>");
  files_.AddFile(kPath, file);
  dialog_.Unload();
  EXPECT_EQ(File(), file);
}

}  // namespace
}  // namespace kitbay::prefs
