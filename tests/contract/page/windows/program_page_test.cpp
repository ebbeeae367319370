// The page shipped with the program, as the control shows it.

#include <gtest/gtest.h>

#include <memory>

#include "contract/page/same_element.h"
#include "contract/page/windows/ignored_events.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

class ProgramPage : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string folder = platform::win32::FindProgramPlace().folder;
    ASSERT_TRUE(loaded_.ShowPage(folder + "\\AddonUpdates.html"));
    document_ = loaded_.window().ConnectDocument(ignored_);
  }
  void TearDown() override { loaded_.window().DisconnectDocument(); }

  LoadedWindow& loaded_ = SharedWindow();
  IgnoredEvents ignored_;
  std::shared_ptr<platform::HtmlDocument> document_;
};

TEST_F(ProgramPage, HasEveryElementThatTheProgramAddresses) {
  for (const char* id : {"category", "installed", "update", "imgtab", "imgtab1", "installedaddons",
                         "installedtransports", "installedchannels", "updatedaddons",
                         "updatedtransports", "updatedchannels"}) {
    EXPECT_TRUE(document_->AllItem(id)) << id;
  }
}

// What the program checks when the page has loaded.
TEST_F(ProgramPage, IsShownInTheDocumentModeThatItNames) {
  EXPECT_EQ(document_->DocumentMode(), 5);
}

TEST_F(ProgramPage, TheUpdatesControlIsChildNodeThreeOfTheCategorySwitch) {
  const auto control = document_->AllItem("category")->ChildNode(3);
  ASSERT_TRUE(control);
  EXPECT_EQ(control->Id(), "update");
  EXPECT_TRUE(AreSame(*control, *document_->AllItem("update")));
  EXPECT_TRUE(control->Disabled());
}

TEST_F(ProgramPage, HoldersOfTheTabBarsAndListsAreEmpty) {
  for (const char* id :
       {"imgtab", "imgtab1", "installedaddons", "installedtransports", "installedchannels",
        "updatedaddons", "updatedtransports", "updatedchannels"}) {
    EXPECT_EQ(document_->AllItem(id)->InnerHtml(), "") << id;
    EXPECT_EQ(document_->AllItem(id)->ChildNodeCount(), 0) << id;
  }
}

TEST_F(ProgramPage, IsAsHighAsTheWindowShowsIt) {
  RECT browser{};
  GetClientRect(loaded_.Browser(), &browser);
  EXPECT_TRUE(loaded_.RunUntil([&] { return document_->BodyClientHeight() == browser.bottom; }))
      << document_->BodyClientHeight() << " of " << browser.bottom;
}

}  // namespace
}  // namespace kitbay::contract
