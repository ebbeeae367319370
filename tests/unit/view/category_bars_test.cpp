// The bars of the two categories: images carried over, and the lists that they select.
#include "page_fixture.h"
#include "two_bars_page.h"
#include "view/page_categories.h"
#include "view/page_ids.h"

namespace kitbay::view {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CategoryBars : public PageTest {
 protected:
  CategoryBars() { Show(kTwoBarsPage); }

  void PreserveInstalled() {
    categories_.PreserveTab("installedaddons", "installedtransports", "installedchannels",
                            "imgtab1");
  }
};

TEST_F(CategoryBars, ChangeImagesGivesEachTabTheImageAtItsPlace) {
  tabs_.showImage("trans", At("tabencloser"));
  categories_.ChangeImages("imgtab1", "imgtab");
  EXPECT_THAT(Images("itabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "itrans.gif", "uaddons.gif"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategoryBars, DarkColoursShowTheImagesOfAnotherFolder) {
  Show(kTwoBarsPage);
  const std::string folder = "file:///C:/Program Files/Kitbay/";
  tabs_.FollowLooks({.has_dark_colours = true});
  EXPECT_EQ(At("itabencloser")->Child(0)->Src(), folder + "tabs/dark100/ichannels.gif");
  EXPECT_EQ(At("tabencloser")->Child(2)->Src(), folder + "tabs/dark100/uaddons.gif");
  // What is set from now on lies there, too.
  tabs_.showImage("trans", At("itabencloser"));
  EXPECT_EQ(At("itabencloser")->Child(1)->Src(), folder + "tabs/dark100/itrans.gif");
  tabs_.FollowLooks({.has_dark_colours = true});
  EXPECT_EQ(At("itabencloser")->Child(1)->Src(), folder + "tabs/dark100/itrans.gif");
  tabs_.FollowLooks({});
  EXPECT_EQ(At("itabencloser")->Child(1)->Src(), folder + "itrans.gif");
  EXPECT_EQ(At("tabencloser")->Child(2)->Src(), folder + "uaddons.gif");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategoryBars, EachResolutionShowsTheImagesThatAreLargeEnough) {
  const std::string folder = "file:///C:/Program Files/Kitbay/";
  const std::pair<int, const char*> folders[] = {{96, ""},
                                                 {120, "tabs/light150/"},
                                                 {144, "tabs/light150/"},
                                                 {168, "tabs/light200/"},
                                                 {288, "tabs/light200/"}};
  for (const auto& [dots, expected] : folders) {
    tabs_.FollowLooks({.dots_per_inch = dots});
    EXPECT_EQ(At("itabencloser")->Child(0)->Src(), folder + expected + "ichannels.gif") << dots;
  }
  tabs_.FollowLooks({.has_dark_colours = true, .dots_per_inch = 192});
  EXPECT_EQ(At("tabencloser")->Child(1)->Src(), folder + "tabs/dark200/utrans.gif");
}

TEST_F(CategoryBars, BarsThatAreMadeLaterHaveTheImagesOfTheLooksToo) {
  Show("<div id='pane'><div id='imgtab'></div></div>");
  tabs_.FollowLooks({.has_dark_colours = true});
  rows_.AddImageTab("imgtab", kInstalledBarMarkup);
  EXPECT_EQ(At("itabencloser")->Child(0)->Src(),
            "file:///C:/Program Files/Kitbay/tabs/dark100/ichannels.gif");
}

TEST_F(CategoryBars, ThePaneSaysWhetherTheColoursAreDark) {
  Show("<div id='pane'></div>");
  tabs_.FollowLooks({.has_dark_colours = true});
  EXPECT_EQ(At("pane")->Property("className"), "dark");
  tabs_.FollowLooks({});
  EXPECT_EQ(At("pane")->Property("className"), "");
}

TEST_F(CategoryBars, ChangeImagesLeavesHiddenTabsHidden) {
  At("tabencloser")->Child(0)->SetStyle("display", "none");
  categories_.ChangeImages("imgtab", "imgtab1");
  EXPECT_EQ(At("tabencloser")->Child(0)->Style("display"), "none");
  EXPECT_EQ(At("itabencloser")->Child(0)->Style("display"), "");
}

TEST_F(CategoryBars, ChangeImagesToAShorterBarIsLoggedAndKeepsWhatItCopied) {
  tabs_.showImage("addons", At("itabencloser"));
  At("tabencloser")->Child(2)->RemoveNode(true);
  categories_.ChangeImages("imgtab", "imgtab1");
  EXPECT_THAT(Images("tabencloser"), ElementsAre("uchannels.gif", "utrans.gif"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ChangeImages", 91, kNotSet)));
}

TEST_F(CategoryBars, ChangeImagesFromAnEmptyHolderIsLogged) {
  At("imgtab1")->SetInnerHtml("");
  categories_.ChangeImages("imgtab1", "imgtab");
  EXPECT_THAT(Images("itabencloser"), ElementsAre("ichannels.gif", "utrans.gif", "uaddons.gif"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::ChangeImages", 91, kNotSet)));
}

TEST_F(CategoryBars, PreserveTabShowsTheListOfTheSelectedTabAlone) {
  tabs_.showImage("addons", At("tabencloser"));
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("", "none", "none"));
  tabs_.showImage("trans", At("tabencloser"));
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "", "none"));
  tabs_.showImage("channels", At("tabencloser"));
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "none", ""));
  EXPECT_THAT(Displays("updated"), ElementsAre("", "", ""));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategoryBars, PreserveTabReadsTheHolderItIsGiven) {
  tabs_.showImage("trans", At("itabencloser"));
  categories_.PreserveTab("updatedaddons", "updatedtransports", "updatedchannels", "imgtab");
  EXPECT_THAT(Displays("updated"), ElementsAre("none", "", "none"));
}

TEST_F(CategoryBars, PreserveTabLooksAtTheFileNameOfAnAbsoluteAddressOnly) {
  At("tabencloser")->Child(0)->SetSrc("file:///C:/Program%20Files/i/uchannels.gif");
  At("tabencloser")->Child(1)->SetSrc("file:///C:/Kit%20u/itrans.gif?width=1&u=2");
  At("tabencloser")->Child(2)->SetSrc("file:///C:/i.files/uaddons.gif#i");
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "", "none"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(CategoryBars, PreserveTabLeavesTheListOfAnImageOfNeitherLook) {
  At("installedtransports")->SetStyle("display", "block");
  At("tabencloser")->Child(1)->SetSrc("blank.gif");
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("none", "block", ""));
}

TEST_F(CategoryBars, PreserveTabWithoutABarIsLogged) {
  At("imgtab1")->SetInnerHtml("");
  PreserveInstalled();
  EXPECT_THAT(Displays("installed"), ElementsAre("", "", ""));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::PreserveTab", 91, kNotSet)));
}

TEST_F(CategoryBars, PreserveTabKeepsWhatItSetBeforeAFailure) {
  At("installedtransports")->RemoveNode(true);
  tabs_.showImage("addons", At("tabencloser"));
  PreserveInstalled();
  EXPECT_EQ(Display("installedchannels"), "none");
  EXPECT_EQ(Display("installedaddons"), "");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::PreserveTab", 91, kNotSet)));
}

}  // namespace
}  // namespace kitbay::view
