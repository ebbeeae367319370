#pragma once

#include "base/text.h"
#include "contract/page/html_document_host.h"
#include "contract/page/row_samples.h"

namespace kitbay::contract {

inline platform::HtmlNodeRef AddRow(platform::HtmlDocument& document, const std::string& list,
                                    const RowSample& sample) {
  const auto row = document.CreateElement(sample.start_tag);
  row->InsertAdjacentHtml("afterBegin", sample.name_line);
  row->InsertAdjacentHtml("beforeEnd", sample.panel);
  document.AllItem(list)->AppendChild(row);
  return row;
}

/// The cell with the buttons in a row's panel.
inline platform::HtmlNodeRef ButtonCell(const platform::HtmlNode& row) {
  return row.ChildNode(1)->ChildNode(0)->ChildNode(1);
}

TEST_P(HtmlDocumentContract, AnInstalledRowIsANameLineAndAHiddenPanel) {
  auto& document = Show("<div id='installedaddons'></div>");
  const auto row = AddRow(document, "installedaddons", InstalledRow({}, false));
  ASSERT_EQ(row->ChildNodeCount(), 2);
  EXPECT_EQ(row->ParentElement()->Id(), "installedaddons");
  const auto name_line = row->ChildNode(0);
  EXPECT_EQ(name_line->TagName(), "SPAN");
  EXPECT_EQ(name_line->Id(), "7");
  ASSERT_EQ(name_line->ChildNodeCount(), 2);
  EXPECT_EQ(name_line->ChildNode(0)->InnerText(), "Notes");
  EXPECT_EQ(name_line->ChildNode(1)->InnerText(), "Version 1.2.0.5");
  EXPECT_EQ(name_line->InnerText(), "NotesVersion 1.2.0.5");
  const auto panel = row->ChildNode(1);
  EXPECT_EQ(panel->TagName(), "DIV");
  EXPECT_EQ(panel->Id(), "div7");
  EXPECT_EQ(panel->Style("display"), "none");
  ASSERT_EQ(panel->ChildNodeCount(), 1);
  EXPECT_EQ(panel->ChildNode(0)->ChildNodeCount(), 2);
}

TEST_P(HtmlDocumentContract, TheButtonOfAnInstalledRowStandsInItsCell) {
  auto& document = Show("<div id='installedaddons'></div>");
  const auto cell = ButtonCell(*AddRow(document, "installedaddons", InstalledRow({}, false)));
  ASSERT_EQ(cell->ChildNodeCount(), 1);
  const auto button = cell->ChildNode(0);
  EXPECT_EQ(button->TagName(), "INPUT");
  EXPECT_EQ(button->Id(), "btninstalled");
  EXPECT_EQ(button->Value(), "Remove");
  EXPECT_FALSE(button->Disabled());
  EXPECT_EQ(button->Style("width"), "70px");
  EXPECT_EQ(button->Style("height"), "22px");
}

TEST_P(HtmlDocumentContract, ACoreRowHasAnEmptyButtonCell) {
  auto& document = Show("<div id='installedaddons'></div>");
  const auto row = AddRow(document, "installedaddons", InstalledRow({}, true));
  EXPECT_EQ(ButtonCell(*row)->ChildNodeCount(), 0);
}

TEST_P(HtmlDocumentContract, ARowAndItsNameLineAreFoundByTheNumber) {
  auto& document = Show("<div id='installedaddons'></div><div id='updatedaddons'></div>");
  AddRow(document, "updatedaddons", AvailableRow({}, false));
  AddRow(document, "installedaddons", InstalledRow({}, false));
  const auto found = document.GetElementsByName("7");
  ASSERT_EQ(found->Length(), 4);
  EXPECT_EQ(found->Item(0)->ParentElement()->Id(), "installedaddons");
  EXPECT_EQ(found->Item(1)->ParentElement()->Id(), "7");
  EXPECT_EQ(found->Item(2)->ParentElement()->Id(), "updatedaddons");
  EXPECT_EQ(found->Item(3)->ParentElement()->Id(), "7");
}

TEST_P(HtmlDocumentContract, ButtonCellsWithUpdateStatus) {
  auto& document = Show("<div id='installedaddons'></div>");
  for (const bool downloading : {false, true}) {
    for (const bool has_update : {false, true}) {
      const auto install = ButtonCell(*AddRow(
          document, "installedaddons", InstalledRowWithUpdates({}, downloading, true, has_update)));
      ASSERT_EQ(install->ChildNodeCount(), 1);
      EXPECT_EQ(install->ChildNode(0)->Value(), "Install");
      EXPECT_EQ(install->ChildNode(0)->Disabled(), downloading);
    }
    const auto update = ButtonCell(*AddRow(document, "installedaddons",
                                           InstalledRowWithUpdates({}, downloading, false, true)));
    ASSERT_EQ(update->ChildNodeCount(), 1);
    EXPECT_EQ(update->ChildNode(0)->Value(), "Update");
    EXPECT_EQ(update->ChildNode(0)->Disabled(), downloading);
    const auto both = ButtonCell(*AddRow(document, "installedaddons",
                                         InstalledRowWithUpdates({}, downloading, false, false)));
    ASSERT_EQ(both->ChildNodeCount(), 3);
    EXPECT_EQ(both->ChildNode(0)->Value(), "Remove");
    EXPECT_FALSE(both->ChildNode(0)->Disabled());
    EXPECT_EQ(both->ChildNode(2)->Id(), "btnchange");
    EXPECT_EQ(both->ChildNode(2)->Value(), "Update");
    EXPECT_EQ(both->ChildNode(2)->Disabled(), downloading);
  }
}

TEST_P(HtmlDocumentContract, AnAvailableRowOffersInstall) {
  auto& document = Show("<div id='updatedchannels'></div>");
  for (const bool downloading : {false, true}) {
    const auto cell =
        ButtonCell(*AddRow(document, "updatedchannels", AvailableRow({}, downloading)));
    ASSERT_EQ(cell->ChildNodeCount(), 1);
    EXPECT_EQ(cell->ChildNode(0)->Value(), "Install");
    EXPECT_EQ(cell->ChildNode(0)->Disabled(), downloading);
  }
}

TEST_P(HtmlDocumentContract, AnEmptyDescriptionLeavesThreeNonBreakingSpaces) {
  auto& document = Show("<div id='installedaddons'></div>");
  ComponentSample component;
  component.description = "";
  const auto row = AddRow(document, "installedaddons", InstalledRow(component, false));
  EXPECT_EQ(row->ChildNode(1)->ChildNode(0)->ChildNode(0)->InnerText(), "\xC2\xA0\xC2\xA0\xC2\xA0");
}

TEST_P(HtmlDocumentContract, MarkupInANameIsMarkup) {
  auto& document = Show("<div id='installedaddons'></div>");
  ComponentSample component;
  component.name = "<b id='inname'>Bold</b> notes<script>throw 1</script>";
  component.description = "<iframe src='about:blank'></iframe>text";
  const auto row = AddRow(document, "installedaddons", InstalledRow(component, false));
  ASSERT_TRUE(document.AllItem("inname"));
  EXPECT_EQ(document.AllItem("inname")->InnerText(), "Bold");
  EXPECT_EQ(row->ChildNode(0)->ChildNode(0)->ChildNode(2)->TagName(), "SCRIPT");
  const auto text_cell = row->ChildNode(1)->ChildNode(0)->ChildNode(0);
  EXPECT_EQ(text_cell->ChildNode(0)->TagName(), "IFRAME");
  EXPECT_EQ(ButtonCell(*row)->ChildNode(0)->Value(), "Remove");
}

TEST_P(HtmlDocumentContract, VersionAndButtonsOfARowAreReplacedInPlace) {
  auto& document = Show("<div id='installedaddons'></div>");
  const auto row =
      AddRow(document, "installedaddons", InstalledRowWithUpdates({}, true, false, true));
  const auto version = row->ChildNode(0)->ChildNode(1);
  version->SetInnerText("");
  version->SetInnerText("Version 2.0.0.0");
  ButtonCell(*row)->SetInnerHtml("");
  ButtonCell(*row)->SetInnerHtml(Button("btninstalled", "Remove", false));
  EXPECT_EQ(row->ChildNode(0)->InnerText(), "NotesVersion 2.0.0.0");
  ASSERT_EQ(ButtonCell(*row)->ChildNodeCount(), 1);
  EXPECT_EQ(ButtonCell(*row)->ChildNode(0)->Value(), "Remove");
}

TEST_P(HtmlDocumentContract, RemovingARowLeavesTheRowOfThatNumberInTheOtherList) {
  auto& document = Show("<div id='installedaddons'></div><div id='updatedaddons'></div>");
  AddRow(document, "installedaddons", InstalledRow({}, false));
  AddRow(document, "updatedaddons", AvailableRow({}, false))->RemoveNode(true);
  EXPECT_EQ(document.AllItem("updatedaddons")->ChildNodeCount(), 0);
  EXPECT_EQ(document.AllItem("installedaddons")->ChildNodeCount(), 1);
  EXPECT_EQ(document.GetElementsByName("7")->Length(), 2);
}

TEST_P(HtmlDocumentContract, ATabBarHoldsThreeImagesAndItsHeight) {
  auto& document = Show("<div id='imgtab'></div><div id='imgtab1'></div>");
  document.AllItem("imgtab")->SetInnerHtml(kInstalledBar);
  document.AllItem("imgtab1")->SetInnerHtml(kUpdatesBar);
  for (const char* id : {"itabencloser", "tabencloser"}) {
    const auto bar = document.AllItem(id);
    ASSERT_EQ(bar->ChildNodeCount(), 3);
    EXPECT_EQ(bar->ChildNode(0)->Id(), "channels");
    EXPECT_EQ(base::AfterLastSlash(bar->ChildNode(0)->Src()), "ichannels.gif");
    EXPECT_EQ(bar->ChildNode(1)->Id(), "trans");
    EXPECT_EQ(base::AfterLastSlash(bar->ChildNode(1)->Src()), "utrans.gif");
    EXPECT_EQ(bar->ChildNode(2)->Id(), "addons");
    EXPECT_EQ(bar->Style("background"), "gray");
    EXPECT_EQ(bar->Style("height"), "33px");
    EXPECT_EQ(bar->StylePixelHeight(), 33);
  }
  EXPECT_EQ(document.AllItem("itabencloser")->Style("display"), "");
  EXPECT_EQ(document.AllItem("tabencloser")->Style("display"), "none");
}

TEST_P(HtmlDocumentContract, AHeadingIsChildNodeZeroAndClearsTheRows) {
  auto& document = Show("<div id='installedaddons'></div>");
  AddRow(document, "installedaddons", InstalledRow({}, false));
  const auto list = document.AllItem("installedaddons");
  list->SetInnerHtml(Heading("Currently Installed  Addons"));
  ASSERT_EQ(list->ChildNodeCount(), 1);
  EXPECT_EQ(list->ChildNode(0)->TagName(), "FONT");
  EXPECT_EQ(list->ChildNode(0)->ChildNode(1)->TagName(), "HR");
  AddRow(document, "installedaddons", InstalledRow({}, false));
  EXPECT_EQ(list->ChildNode(1)->Id(), "7");
}

TEST_P(HtmlDocumentContract, AStatusLineIsATextAndARule) {
  auto& document = Show("<div id='installedaddons'></div>");
  const auto list = document.AllItem("installedaddons");
  list->SetInnerHtml(Status("No Addon is installed."));
  EXPECT_EQ(list->ChildNodeCount(), 2);
  EXPECT_EQ(list->ChildCount(), 1);
  EXPECT_EQ(list->Child(0)->TagName(), "HR");
}

}  // namespace kitbay::contract
