#include "view/row_markup.h"

#include <gtest/gtest.h>

namespace kitbay::view {
namespace {

TEST(RowMarkup, TheNameLineHoldsNameAndVersion) {
  EXPECT_EQ(NameLine("Notes", 7, "1.2.0.5"),
            "<span id =7  style='margin-right:4pt; margin-left:4pt; width:100%; cursor:default;'>"
            "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>Notes"
            "</font><font style='font-size:11; font-family:verdana; width:50%; "
            "text-align:right;'>Version 1.2.0.5</font></span>");
}

TEST(RowMarkup, TheDescriptionOpeningLeavesSpanAndPanelOpen) {
  EXPECT_EQ(DescriptionOpening("Keeps notes.", 12),
            "<div id ='div12'  style='display:none; width:100%; padding-top:5pt;'>"
            "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
            "<font style='font-size:11; font-family:verdana; width:70%; text-align:left;'>"
            "Keeps notes.&nbsp;&nbsp;&nbsp;</font>");
}

TEST(RowMarkup, RowNumbersAreWrittenInDecimalWithoutPaddingUpToTheLargest) {
  EXPECT_EQ(RowStartTag(1), "<div id =1 style='padding-bottom:5pt; padding-top:5pt;'>");
  EXPECT_EQ(RowStartTag(32767), "<div id =32767 style='padding-bottom:5pt; padding-top:5pt;'>");
}

TEST(RowMarkup, ARowWithUpdatesHasNoBlankBetweenItsPaddings) {
  EXPECT_EQ(RowWithUpdatesStartTag(4), "<div id =4 style='padding-bottom:5pt;padding-top:5pt;'>");
}

TEST(RowMarkup, AnEmptyDescriptionLeavesTheThreeNonBreakingSpaces) {
  EXPECT_EQ(DescriptionOpening("", 1),
            "<div id ='div1'  style='display:none; width:100%; padding-top:5pt;'>"
            "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
            "<font style='font-size:11; font-family:verdana; width:70%; text-align:left;'>"
            "&nbsp;&nbsp;&nbsp;</font>");
}

TEST(RowMarkup, NothingIsEscaped) {
  EXPECT_EQ(NameLine("<b>&amp;'", 3, "<i>"),
            "<span id =3  style='margin-right:4pt; margin-left:4pt; width:100%; cursor:default;'>"
            "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>"
            "<b>&amp;'</font><font style='font-size:11; font-family:verdana; width:50%; "
            "text-align:right;'>Version <i></font></span>");
}

TEST(RowMarkup, AnInstalledRowHasARemoveButton) {
  EXPECT_EQ(InstalledPanel("OPENING", false),
            "OPENING<font style='font-family:verdana; width:30%; text-align:right;'>"
            "<input type='button' id='btninstalled' value='Remove' "
            "style='width:70; height:22; font-family:verdana; font-size:11;'>"
            "</font></span></div>");
}

TEST(RowMarkup, CoreComponentHasNoButton) {
  EXPECT_EQ(InstalledPanel("OPENING", true),
            "OPENING<font style='font-family:verdana; width:30%; text-align:right;'>"
            "</font></span></div>");
}

TEST(RowMarkup, TheRemoveButtonOfACommittedUpdateIsThePlainOne) {
  EXPECT_STREQ(kRemoveButton,
               "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
               "font-family:verdana; font-size:11;'>");
}

/// The start of every panel with update status.
constexpr const char* kUpdatesOpening =
    "<div id ='div9'  style='font-size:11; display:none; width:100%; padding-top:5pt;' );'>"
    "<span style='margin-left:4pt; margin-right:4pt; width:100&; '>"
    "<font style='font-size:11; font-family:verdana; width:30%; text-align:left;'>"
    "Text.&nbsp;&nbsp;&nbsp;</font>"
    "<font style='font-family:verdana; text-align:right; width:70%; '>";

struct ButtonCellCase {
  const char* name;
  bool downloading;
  bool not_installed;
  bool is_core;
  const char* cell;
};

class ButtonCell : public ::testing::TestWithParam<ButtonCellCase> {};

TEST_P(ButtonCell, IsAsTheFlagsSay) {
  const ButtonCellCase& flags = GetParam();
  EXPECT_EQ(PanelWithUpdates("Text.", 9, flags.is_core, flags.not_installed, flags.downloading),
            std::string(kUpdatesOpening) + flags.cell);
}

constexpr const char* kInstallOff =
    "<input type='button' id='btninstalled' disabled value='Install' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";
constexpr const char* kInstallOn =
    "<input type='button' id='btninstalled' value='Install' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";

INSTANTIATE_TEST_SUITE_P(
    RowMarkup, ButtonCell,
    ::testing::Values(
        ButtonCellCase{"NewWhileDownloading", true, true, false, kInstallOff},
        ButtonCellCase{"NewCountsBeforeUpdateWhileDownloading", true, true, true, kInstallOff},
        ButtonCellCase{
            "UpdateWhileDownloading", true, false, true,
            "<input type='button' id='btninstalled' disabled value='Update' style='width:70; "
            "height:22; font-family:verdana; font-size:11;'></font></span></div>"},
        ButtonCellCase{
            "RemoveStaysOnWhileDownloading", true, false, false,
            "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
            "font-family:verdana; font-size:11;'>&nbsp&nbsp<input type='button' id='btnchange' "
            "disabled value='Update' style='width:70; height:22; font-family:verdana; "
            "font-size:11;'></font></span></div>"},
        ButtonCellCase{"New", false, true, false, kInstallOn},
        ButtonCellCase{"NewCountsBeforeUpdate", false, true, true, kInstallOn},
        ButtonCellCase{"Update", false, false, true,
                       "<input type='button' id='btninstalled' value='Update' style='width:70; "
                       "height:22; font-family:verdana; font-size:11;'></font></span></div>"},
        ButtonCellCase{
            "RemoveAndUpdate", false, false, false,
            "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
            "font-family:verdana; font-size:11;'>&nbsp&nbsp<input type='button' id='btnchange' "
            "value='Update' style='width:70; height:22; font-family:verdana; font-size:11;'>"
            "</font></span></div>"}),
    [](const auto& flags) { return flags.param.name; });

TEST(RowMarkup, ANewComponentHasAnInstallButton) {
  EXPECT_EQ(NewComponentPanel("Text.", 9, false),
            "<div id ='div9' style='font-size:11; display:none; width:100%; padding-top:5pt;'>"
            "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
            "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>"
            "Text.&nbsp;&nbsp;&nbsp;</font>"
            "<font style='font-family:verdana; text-align:right; width:50%;'>"
            "<input type='button' id='btninstalled' value='Install' style='width:70; height:22; "
            "font-family:verdana; font-size:11;'></font></span></div>");
}

TEST(RowMarkup, TheInstallButtonOfANewComponentIsOffWhileDownloading) {
  EXPECT_EQ(NewComponentPanel("", 10, true),
            "<div id ='div10' style='font-size:11; display:none; width:100%; padding-top:5pt;'>"
            "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
            "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>"
            "&nbsp;&nbsp;&nbsp;</font>"
            "<font style='font-family:verdana; text-align:right; width:50%;'>"
            "<input type='button' id='btninstalled' disabled value='Install' style='width:70; "
            "height:22; font-family:verdana; font-size:11;'></font></span></div>");
}

TEST(RowMarkup, ARowsLabelSaysNameAndVersionAndWhetherThereIsAnUpdate) {
  EXPECT_EQ(
      RowAttributes("Notes", "1.2", false),
      "<div role='treeitem' aria-expanded='false' tabindex='-1' aria-label='Notes, Version 1.2'>");
  EXPECT_EQ(RowAttributes("Notes", "1.2", true),
            "<div role='treeitem' aria-expanded='false' tabindex='-1' "
            "aria-label='Notes, Version 1.2, update available' class='hasupdate'>");
}

TEST(RowMarkup, ALabelIsTheTextOfANameThatIsMarkup) {
  EXPECT_EQ(RowLabel("<b>O'Neill</b> &amp; <i class='x'>Söhne</i> 1 < 2 <", "N/A"),
            "<div aria-label='O&#39;Neill &amp; Söhne 1 < 2 <, Version N/A'>");
  EXPECT_EQ(RowLabel("cut <b", "1"), "<div aria-label='cut , Version 1'>");
}

}  // namespace
}  // namespace kitbay::view
