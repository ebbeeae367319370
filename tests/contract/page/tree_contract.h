#pragma once

#include "contract/page/html_document_host.h"
#include "contract/page/same_element.h"

namespace kitbay::contract {

/// The ids of the child elements, in order.
inline std::string IdsOfChildren(const platform::HtmlNode& parent) {
  std::string ids;
  for (int i = 0; i < parent.ChildCount(); ++i) {
    ids += parent.Child(i)->Id() + " ";
  }
  return ids;
}

TEST_P(HtmlDocumentContract, ChildNodesLeaveOutTextOfWhiteSpaceOnly) {
  auto& document = Show(
      "<div id='category'>\r\n  <div id='head'>x</div> <input id='installed'>\n\n"
      "\t<div id='rule'></div>\n<input id='update'>\n</div>");
  const auto category = document.AllItem("category");
  EXPECT_EQ(category->ChildNodeCount(), 4);
  ASSERT_TRUE(category->ChildNode(3));
  EXPECT_EQ(category->ChildNode(3)->Id(), "update");
}

TEST_P(HtmlDocumentContract, ChildNodesHoldTextsAndChildrenDoNot) {
  auto& document = Show("<div id='list'>No Addon is installed.<hr id='rule'> and more</div>");
  const auto list = document.AllItem("list");
  EXPECT_EQ(list->ChildNodeCount(), 3);
  EXPECT_EQ(list->ChildNode(1)->Id(), "rule");
  EXPECT_EQ(list->ChildCount(), 1);
  EXPECT_EQ(list->Child(0)->Id(), "rule");
}

TEST_P(HtmlDocumentContract, ANonBreakingSpaceIsNoWhiteSpace) {
  auto& document = Show("<font id='cell'><b></b>&nbsp&nbsp<i id='second'></i></font>");
  const auto cell = document.AllItem("cell");
  EXPECT_EQ(cell->ChildNodeCount(), 3);
  EXPECT_EQ(cell->ChildNode(2)->Id(), "second");
}

TEST_P(HtmlDocumentContract, AnIndexPastTheEndGivesNothing) {
  auto& document = Show("<div id='list'>text<b></b></div>");
  const auto list = document.AllItem("list");
  EXPECT_FALSE(list->Child(1));
  EXPECT_FALSE(list->ChildNode(2));
  EXPECT_FALSE(list->ChildNode(40000));
}

TEST_P(HtmlDocumentContract, ParentsLeadToTheTopOfTheTree) {
  auto& document = Show("<div id='list'><b id='7'></b></div>");
  const auto body = document.AllItem("7")->ParentElement()->ParentElement();
  EXPECT_EQ(body->TagName(), "BODY");
  const auto html = body->ParentElement();
  EXPECT_EQ(html->TagName(), "HTML");
  EXPECT_FALSE(html->ParentElement());
}

TEST_P(HtmlDocumentContract, MarkupGoesToEachOfTheFourPlaces) {
  auto& document = Show("<div id='list'><div id='row'><b id='c'></b></div></div>");
  const auto row = document.AllItem("row");
  row->InsertAdjacentHtml("beforeBegin", "<i id='a'></i>");
  row->InsertAdjacentHtml("afterBegin", "<i id='b'></i>");
  row->InsertAdjacentHtml("beforeEnd", "<i id='d'></i><i id='e'></i>");
  row->InsertAdjacentHtml("afterEnd", "<i id='f'></i>");
  EXPECT_EQ(IdsOfChildren(*row), "b c d e ");
  EXPECT_EQ(IdsOfChildren(*document.AllItem("list")), "a row f ");
  EXPECT_EQ(document.AllItem("e")->ParentElement()->Id(), "row");
}

TEST_P(HtmlDocumentContract, MarkupIsInsertedIntoAnElementOffThePage) {
  auto& document = Show("");
  const auto row = document.CreateElement("<div id =7>");
  row->InsertAdjacentHtml("afterBegin", "<span id =7>name</span>");
  row->InsertAdjacentHtml("beforeEnd", "<div id ='div7'></div>");
  EXPECT_EQ(IdsOfChildren(*row), "7 div7 ");
}

TEST_P(HtmlDocumentContract, MarkupBesideAnElementWithoutParentFails) {
  auto& document = Show("");
  const auto row = document.CreateElement("<div id =7>");
  ExpectRefusal([&] { row->InsertAdjacentHtml("beforeBegin", "<b></b>"); });
  ExpectRefusal([&] { row->InsertAdjacentHtml("afterEnd", "<b></b>"); });
}

TEST_P(HtmlDocumentContract, MarkupAtAnUnknownPlaceFails) {
  auto& document = Show("<div id='list'></div>");
  const auto list = document.AllItem("list");
  ExpectRefusal([&] { list->InsertAdjacentHtml("inside", "<b></b>"); });
  EXPECT_EQ(list->ChildNodeCount(), 0);
}

TEST_P(HtmlDocumentContract, AppendingMovesANodeFromItsPlace) {
  auto& document = Show("<div id='from'><b id='7'><i id='in'></i></b></div><div id='to'>x</div>");
  const auto node = document.AllItem("7");
  document.AllItem("to")->AppendChild(node);
  EXPECT_EQ(document.AllItem("from")->ChildNodeCount(), 0);
  EXPECT_TRUE(AreSame(*document.AllItem("to")->ChildNode(1), *node));
  EXPECT_EQ(document.AllItem("in")->ParentElement()->ParentElement()->Id(), "to");
}

TEST_P(HtmlDocumentContract, AppendingALaterChildAgainPutsItLast) {
  auto& document = Show("<div id='list'><b id='7'></b><b id='8'></b></div>");
  document.AllItem("list")->AppendChild(document.AllItem("7"));
  EXPECT_EQ(IdsOfChildren(*document.AllItem("list")), "8 7 ");
}

TEST_P(HtmlDocumentContract, AppendingNothingOrAnAncestorFails) {
  auto& document = Show("<div id='list'><b id='7'></b></div>");
  const auto row = document.AllItem("7");
  EXPECT_EQ(FailureNumber([&] { row->AppendChild(nullptr); }), 91);
  ExpectRefusal([&] { row->AppendChild(document.AllItem("list")); });
  EXPECT_EQ(IdsOfChildren(*document.AllItem("list")), "7 ");
}

TEST_P(HtmlDocumentContract, RemovingDeepTakesTheSubtreeOffThePage) {
  auto& document = Show("<div id='list'><div id='7'><b id='in'></b></div><p id='8'></p></div>");
  document.AllItem("7")->RemoveNode(true);
  EXPECT_EQ(IdsOfChildren(*document.AllItem("list")), "8 ");
  EXPECT_FALSE(document.AllItem("7"));
  EXPECT_FALSE(document.AllItem("in"));
}

TEST_P(HtmlDocumentContract, RemovingShallowLeavesTheChildrenInItsPlace) {
  auto& document = Show(
      "<div id='list'><b id='6'></b><div id='7'><b id='x'></b><b id='y'></b></div>"
      "<b id='8'></b></div>");
  const auto row = document.AllItem("7");
  row->RemoveNode(false);
  EXPECT_EQ(IdsOfChildren(*document.AllItem("list")), "6 x y 8 ");
  EXPECT_EQ(row->ChildNodeCount(), 0);
}

TEST_P(HtmlDocumentContract, ARemovedNodeStaysUsableAndCanComeBack) {
  auto& document = Show("<div id='list'><div id='7'><b id='in'>text</b></div></div>");
  const auto row = document.AllItem("7");
  const auto inner = document.AllItem("in");
  row->RemoveNode(true);
  EXPECT_EQ(row->Id(), "7");
  EXPECT_FALSE(row->ParentElement());
  EXPECT_EQ(inner->InnerText(), "text");
  EXPECT_TRUE(AreSame(*inner->ParentElement(), *row));
  document.AllItem("list")->AppendChild(row);
  EXPECT_TRUE(AreSame(*document.AllItem("in"), *inner));
}

TEST_P(HtmlDocumentContract, ANodeWhoseParentWasEmptiedStaysUsable) {
  auto& document = Show("<div id='list'><div id='7'></div></div>");
  const auto row = document.AllItem("7");
  document.AllItem("list")->SetInnerHtml("");
  EXPECT_EQ(row->Id(), "7");
  EXPECT_FALSE(document.AllItem("7"));
}

TEST_P(HtmlDocumentContract, ATextNodeCanBeRemoved) {
  auto& document = Show("<div id='list'>text<b id='7'></b></div>");
  const auto list = document.AllItem("list");
  list->ChildNode(0)->RemoveNode(true);
  EXPECT_EQ(list->ChildNodeCount(), 1);
  EXPECT_EQ(list->InnerText(), "");
}

}  // namespace kitbay::contract
