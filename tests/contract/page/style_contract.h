#pragma once

#include "contract/page/html_document_host.h"

namespace kitbay::contract {

TEST_P(HtmlDocumentContract, StylesAreReadByTheirScriptNames) {
  auto& document = Show(
      "<div id='list' style='display:none; background:gray; font-weight:800; height:33px; "
      "position:relative; text-align:right;'></div>");
  const auto list = document.AllItem("list");
  EXPECT_EQ(list->Style("display"), "none");
  EXPECT_EQ(list->Style("background"), "gray");
  EXPECT_EQ(list->Style("fontWeight"), "800");
  EXPECT_EQ(list->Style("height"), "33px");
  EXPECT_EQ(list->Style("position"), "relative");
  EXPECT_EQ(list->Style("textAlign"), "right");
}

TEST_P(HtmlDocumentContract, AnUnsetStyleIsEmpty) {
  auto& document = Show("<style>#list { display: none }</style><div id='list'></div>");
  EXPECT_EQ(document.AllItem("list")->Style("display"), "");
  EXPECT_EQ(document.AllItem("list")->Style("top"), "");
}

TEST_P(HtmlDocumentContract, StylesAreSetAndReadBack) {
  auto& document = Show("<div id='row' style='background:white'></div>");
  const auto row = document.AllItem("row");
  row->SetStyle("background", "navy");
  row->SetStyle("color", "white");
  row->SetStyle("fontWeight", "800");
  row->SetStyle("display", "none");
  row->SetStyle("border", "2px inset");
  EXPECT_EQ(row->Style("background"), "navy");
  EXPECT_EQ(row->Style("color"), "white");
  EXPECT_EQ(row->Style("fontWeight"), "800");
  EXPECT_EQ(row->Style("display"), "none");
  EXPECT_EQ(row->Style("border"), "2px inset");
}

TEST_P(HtmlDocumentContract, AnEmptyValueRemovesAStyle) {
  auto& document = Show("<div id='row' style='display:none; font-weight:800; color:navy'></div>");
  const auto row = document.AllItem("row");
  row->SetStyle("display", "");
  row->SetStyle("fontWeight", "");
  EXPECT_EQ(row->Style("display"), "");
  EXPECT_EQ(row->Style("fontWeight"), "");
  EXPECT_EQ(row->Style("color"), "navy");
}

TEST_P(HtmlDocumentContract, StyleNamesIgnoreCase) {
  auto& document = Show("<div id='row'></div>");
  document.AllItem("row")->SetStyle("Color", "navy");
  EXPECT_EQ(document.AllItem("row")->Style("color"), "navy");
  EXPECT_EQ(document.AllItem("row")->Style("COLOR"), "navy");
}

TEST_P(HtmlDocumentContract, LengthsWithoutUnitArePixels) {
  auto& document = Show("<input id='button' style='width:70; height:22; font-size:11;'>");
  const auto button = document.AllItem("button");
  EXPECT_EQ(button->Style("width"), "70px");
  EXPECT_EQ(button->Style("height"), "22px");
  EXPECT_EQ(button->Style("fontSize"), "11px");
  button->SetStyle("height", "367");
  EXPECT_EQ(button->Style("height"), "367px");
  EXPECT_EQ(button->StylePixelHeight(), 367);
}

TEST_P(HtmlDocumentContract, AnInvalidLengthIsLeftOut) {
  auto& document = Show("<span id='cell' style='margin-left:4pt; width:100&; '></span>");
  EXPECT_EQ(document.AllItem("cell")->Style("width"), "");
  EXPECT_EQ(document.AllItem("cell")->Style("marginLeft"), "4pt");
}

TEST_P(HtmlDocumentContract, ANegativeHeightIsNotTaken) {
  auto& document = Show("<div id='list' style='height:22px; top:5px'></div>");
  const auto list = document.AllItem("list");
  // An engine may refuse it or ignore it.
  FailureNumber([&] { list->SetStyle("height", "-33"); });
  EXPECT_EQ(list->Style("height"), "22px");
  list->SetStyle("top", "-33");
  EXPECT_EQ(list->Style("top"), "-33px");
}

TEST_P(HtmlDocumentContract, ALengthIsTakenOverFromAnotherElement) {
  auto& document = Show("<span id='bar' style='height:33px'></span><div id='list'></div>");
  document.AllItem("list")->SetStyle("top", document.AllItem("bar")->Style("height"));
  EXPECT_EQ(document.AllItem("list")->Style("top"), "33px");
}

TEST_P(HtmlDocumentContract, ThePixelHeightIsThatOfTheOwnStyle) {
  auto& document = Show("<span id='bar' style='height:33px'>x</span><div id='list'>x</div>");
  EXPECT_EQ(document.AllItem("bar")->StylePixelHeight(), 33);
  EXPECT_EQ(document.AllItem("list")->StylePixelHeight(), 0);
}

TEST_P(HtmlDocumentContract, AnUnknownStyleIsNoMember) {
  auto& document = Show("<div id='row'></div>");
  const auto row = document.AllItem("row");
  EXPECT_EQ(FailureNumber([&] { row->Style("noSuchStyle"); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { row->SetStyle("noSuchStyle", "1"); }), kNoSuchMember);
}

}  // namespace kitbay::contract
