// The shipped page file, as the program finds it and changes it.
#include <fstream>
#include <iterator>

#include "base/text.h"
#include "page_fixture.h"
#include "recording_commands.h"
#include "two_bars_page.h"
#include "view/page_events.h"

namespace kitbay::view {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string PageMarkup() {
  std::ifstream file(KITBAY_PAGE_FILE, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class PageFile : public PageTest {
 protected:
  PageFile() {
    Show(PageMarkup());
    document_->SetEvents(&events_);
    InstallDatastore(kSmallDatastore);
  }

  std::vector<std::string> InstalledDisplays() const {
    return {Display("installedaddons"), Display("installedtransports"),
            Display("installedchannels")};
  }

  RecordingCommands commands_;
  PageEvents events_{log_, page_, state_, tabs_, categories_, buttons_, commands_};
};

// From mode 9 on, no element would be created from a start tag.
TEST_F(PageFile, NamesItsDocumentModeBeforeAllElseAndHasNoScript) {
  const std::string markup = base::ToLower(PageMarkup());
  EXPECT_THAT(markup, StartsWith("<html lang=\"en\">\n<head>\n"
                                 "<meta http-equiv=\"x-ua-compatible\" content=\"ie=5\">\n"));
  EXPECT_THAT(markup, Not(HasSubstr("<!doctype")));
  EXPECT_THAT(markup, Not(HasSubstr("<script")));
}

TEST_F(PageFile, HasEveryElementThatTheProgramAddresses) {
  for (const char* id : {"imgtab", "imgtab1", "category", "installed", "update", "installedaddons",
                         "installedtransports", "installedchannels", "updatedaddons",
                         "updatedtransports", "updatedchannels"}) {
    EXPECT_NE(At(id), nullptr) << id;
  }
}

TEST_F(PageFile, TheUpdatesControlIsChildNodeThreeOfTheCategorySwitch) {
  const auto category = At("category");
  ASSERT_GT(category->ChildNodeCount(), 3);
  EXPECT_EQ(category->ChildNode(3)->Id(), "update");
  // No text between the elements, so that a browser which counts white space finds the same child.
  EXPECT_EQ(category->ChildNodeCount(), category->ChildCount());
  EXPECT_THAT(category->InnerHtml(), Not(HasSubstr("> <")));
  EXPECT_THAT(category->InnerHtml(), Not(HasSubstr("\n")));
}

TEST_F(PageFile, BarsAndListsAreEmpty) {
  std::vector<std::string> contents;
  for (const char* id :
       {"imgtab", "imgtab1", "installedaddons", "installedtransports", "installedchannels",
        "updatedaddons", "updatedtransports", "updatedchannels"}) {
    contents.push_back(At(id)->InnerHtml());
  }
  EXPECT_THAT(contents, Each(""));
}

TEST_F(PageFile, ShowsTheInstalledChannelsAtFirst) {
  EXPECT_THAT(InstalledDisplays(), ElementsAre("none", "none", ""));
  EXPECT_TRUE(At("update")->Disabled());
  EXPECT_FALSE(At("installed")->Disabled());
}

TEST_F(PageFile, ShowLocalDataBringsTheBarAndTheChannels) {
  tabs_.ShowLocalData();
  EXPECT_THAT(log_.entries, IsEmpty());
  const auto bar = At("itabencloser");
  ASSERT_EQ(At("imgtab")->ChildNodeCount(), 1);
  EXPECT_EQ(bar->ParentElement()->Id(), "imgtab");
  ASSERT_EQ(bar->ChildNodeCount(), 3);
  EXPECT_EQ(bar->ChildNode(0)->Id(), "channels");
  EXPECT_EQ(bar->ChildNode(1)->Id(), "trans");
  EXPECT_EQ(bar->ChildNode(2)->Id(), "addons");
  EXPECT_EQ(base::AfterLastSlash(bar->ChildNode(0)->Src()), "ichannels.gif");
  EXPECT_TRUE(At("update")->Disabled());
  EXPECT_EQ(At("imgtab1")->InnerHtml(), "");
  ASSERT_EQ(At("installedchannels")->ChildNodeCount(), 2);
  EXPECT_EQ(At("installedchannels")->Style("top"), "33px");
  EXPECT_EQ(At("installedchannels")->Style("height"), "367px");
}

TEST_F(PageFile, AClickOnATabShowsItsKindAndAClickOnANameOpensItsRow) {
  tabs_.ShowLocalData();
  document_->Click(At("addons"));
  EXPECT_THAT(InstalledDisplays(), ElementsAre("", "none", "none"));
  ASSERT_EQ(At("installedaddons")->ChildNodeCount(), 2);
  const auto row = At("installedaddons")->ChildNode(1);
  EXPECT_EQ(row->ChildNode(0)->ChildNode(0)->InnerHtml(), "Notes");
  document_->Click(row->ChildNode(0)->ChildNode(0));
  EXPECT_EQ(row->ChildNode(1)->Style("display"), "");
  EXPECT_EQ(row->Style("background"), "navy");
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::view
