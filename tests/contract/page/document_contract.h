#pragma once

#include "contract/page/html_document_host.h"
#include "contract/page/same_element.h"

namespace kitbay::contract {

TEST_P(HtmlDocumentContract, AllItemFindsAnElementByItsId) {
  auto& document = Show("<div id='installedaddons'></div><span id='itabencloser'></span>");
  ASSERT_TRUE(document.AllItem("itabencloser"));
  EXPECT_EQ(document.AllItem("itabencloser")->TagName(), "SPAN");
}

TEST_P(HtmlDocumentContract, AllItemFindsAnElementByItsName) {
  auto& document = Show("<div></div><input name='source' value='here'>");
  ASSERT_TRUE(document.AllItem("source"));
  EXPECT_EQ(document.AllItem("source")->Value(), "here");
}

TEST_P(HtmlDocumentContract, AllItemGivesTheFirstOfSeveral) {
  auto& document = Show("<p id='outer'><span id='trans'></span></p><img id='trans'>");
  EXPECT_EQ(document.AllItem("trans")->TagName(), "SPAN");
}

TEST_P(HtmlDocumentContract, AllItemTakesDigitsAsAnIdAndNotAsAPosition) {
  auto& document = Show("<div id='a'></div><div id='7'></div>");
  ASSERT_TRUE(document.AllItem("7"));
  EXPECT_EQ(document.AllItem("7")->Id(), "7");
  EXPECT_FALSE(document.AllItem("0"));
}

TEST_P(HtmlDocumentContract, AllItemGivesNothingForAnUnknownId) {
  auto& document = Show("<div id='addons'></div>");
  EXPECT_FALSE(document.AllItem("channels"));
  EXPECT_FALSE(document.AllItem("addon"));
  EXPECT_FALSE(document.AllItem(""));
}

TEST_P(HtmlDocumentContract, IdsDifferByCase) {
  auto& document = Show("<div id='addons'></div>");
  EXPECT_FALSE(document.AllItem("Addons"));
  EXPECT_EQ(document.GetElementsByName("ADDONS")->Length(), 0);
}

TEST_P(HtmlDocumentContract, ElementsByNameMatchNameOrIdInDocumentOrder) {
  auto& document = Show(
      "<div id='7'><input name='7'></div><div id='8'></div><p><a name='7'>x</a></p>"
      "<span id='7'></span>");
  const auto found = document.GetElementsByName("7");
  ASSERT_EQ(found->Length(), 4);
  EXPECT_EQ(found->Item(0)->TagName(), "DIV");
  EXPECT_EQ(found->Item(1)->TagName(), "INPUT");
  EXPECT_EQ(found->Item(2)->TagName(), "A");
  EXPECT_EQ(found->Item(3)->TagName(), "SPAN");
  EXPECT_FALSE(found->Item(4));
}

TEST_P(HtmlDocumentContract, ElementsByNameCountAnElementWithThatIdAndNameOnce) {
  auto& document = Show("<input id='7' name='7'>");
  EXPECT_EQ(document.GetElementsByName("7")->Length(), 1);
}

TEST_P(HtmlDocumentContract, ElementsByNameFollowTheTreeAndNotTheTimeOfInsertion) {
  auto& document = Show("<div id='first'></div><div id='second'></div>");
  document.AllItem("second")->SetInnerHtml("<b id='7'></b>");
  document.AllItem("first")->SetInnerHtml("<i id='7'></i>");
  const auto found = document.GetElementsByName("7");
  ASSERT_EQ(found->Length(), 2);
  EXPECT_EQ(found->Item(0)->TagName(), "I");
  EXPECT_EQ(found->Item(1)->TagName(), "B");
  EXPECT_EQ(document.AllItem("7")->TagName(), "I");
}

TEST_P(HtmlDocumentContract, ANewElementHasTheAttributesOfItsStartTag) {
  auto& document = Show("");
  const auto row =
      document.CreateElement("<div id =7 style='padding-bottom:5pt; padding-top:5pt;'>");
  ASSERT_TRUE(row);
  EXPECT_EQ(row->TagName(), "DIV");
  EXPECT_EQ(row->Id(), "7");
  EXPECT_EQ(row->Style("paddingBottom"), "5pt");
  EXPECT_EQ(row->Style("paddingTop"), "5pt");
  EXPECT_EQ(row->ChildNodeCount(), 0);
}

TEST_P(HtmlDocumentContract, ANewElementIsNotOnThePageUntilItIsAppended) {
  auto& document = Show("<div id='list'></div>");
  const auto row = document.CreateElement("<div id =7>");
  EXPECT_FALSE(row->ParentElement());
  EXPECT_FALSE(document.AllItem("7"));
  EXPECT_EQ(document.GetElementsByName("7")->Length(), 0);
  document.AllItem("list")->AppendChild(row);
  ASSERT_TRUE(document.AllItem("7"));
  EXPECT_TRUE(AreSame(*document.AllItem("7"), *row));
}

TEST_P(HtmlDocumentContract, APageWithoutADoctypeIsShownInModeFive) {
  EXPECT_EQ(Show("<p>x</p>").DocumentMode(), 5);
}

TEST_P(HtmlDocumentContract, TheBodyHasAHeight) { EXPECT_GT(Show("").BodyClientHeight(), 0); }

TEST_P(HtmlDocumentContract, OutsideAnEventThereIsNoSource) {
  EXPECT_FALSE(Show("<input id='update'>").EventSource());
}

TEST_P(HtmlDocumentContract, HandlesOfAnEarlierPageAreDisconnected) {
  Show("<div id='list'></div>");
  const auto earlier = document_;
  const auto list = earlier->AllItem("list");
  auto& now = Show("<div id='list'></div>");
  EXPECT_EQ(FailureNumber([&] { earlier->AllItem("list"); }), kPageIsLeft);
  EXPECT_EQ(FailureNumber([&] { earlier->BodyClientHeight(); }), kPageIsLeft);
  EXPECT_EQ(FailureNumber([&] { list->Id(); }), kPageIsLeft);
  EXPECT_EQ(FailureNumber([&] { list->SetInnerHtml("x"); }), kPageIsLeft);
  EXPECT_EQ(now.AllItem("list")->InnerHtml(), "");
}

}  // namespace kitbay::contract
