#pragma once

#include "base/text.h"
#include "contract/page/html_document_host.h"
#include "contract/page/same_element.h"

namespace kitbay::contract {

TEST_P(HtmlDocumentContract, ANodeIsTheSameHoweverItWasReached) {
  auto& document = Show("<div id='list'><b id='7'></b><b id='8'></b></div>");
  const auto list = document.AllItem("list");
  EXPECT_TRUE(AreSame(*list->Child(0), *document.AllItem("7")));
  EXPECT_TRUE(AreSame(*list->Child(0)->ParentElement(), *list));
  EXPECT_FALSE(AreSame(*list->Child(0), *list->Child(1)));
}

TEST_P(HtmlDocumentContract, TagNamesAreCapitals) {
  EXPECT_EQ(Show("<font id='cell'></font>").AllItem("cell")->TagName(), "FONT");
}

TEST_P(HtmlDocumentContract, AnElementWithoutIdHasAnEmptyOne) {
  EXPECT_EQ(Show("<div id='list'><b></b></div>").AllItem("list")->Child(0)->Id(), "");
}

TEST_P(HtmlDocumentContract, AButtonHasItsValue) {
  auto& document = Show("<input type='button' id='btninstalled' value='Remove'>");
  EXPECT_EQ(document.AllItem("btninstalled")->Value(), "Remove");
}

TEST_P(HtmlDocumentContract, AButtonIsDisabledAndEnabled) {
  auto& document = Show("<input type='button' id='a'><input type='button' id='b' disabled>");
  EXPECT_FALSE(document.AllItem("a")->Disabled());
  EXPECT_TRUE(document.AllItem("b")->Disabled());
  document.AllItem("a")->SetDisabled(true);
  document.AllItem("b")->SetDisabled(false);
  EXPECT_TRUE(document.AllItem("a")->Disabled());
  EXPECT_FALSE(document.AllItem("b")->Disabled());
}

TEST_P(HtmlDocumentContract, AnImageSourceReadsAsAnAbsoluteUrl) {
  auto& document = Show("<img id='trans' src='utrans.gif'>");
  const auto image = document.AllItem("trans");
  EXPECT_TRUE(image->Src().starts_with("file:///")) << image->Src();
  EXPECT_EQ(base::AfterLastSlash(image->Src()), "utrans.gif");
  image->SetSrc("itrans.gif");
  EXPECT_TRUE(image->Src().starts_with("file:///")) << image->Src();
  EXPECT_EQ(base::AfterLastSlash(image->Src()), "itrans.gif");
}

TEST_P(HtmlDocumentContract, AnAbsoluteImageSourceIsTakenOver) {
  auto& document = Show("<img id='from' src='iaddons.gif'><img id='to' src='uaddons.gif'>");
  const std::string url = document.AllItem("from")->Src();
  document.AllItem("to")->SetSrc(url);
  EXPECT_EQ(document.AllItem("to")->Src(), url);
}

TEST_P(HtmlDocumentContract, InnerTextLeavesOutTheTags) {
  auto& document = Show(
      "<span id='line'><font>Notes</font><font>Version 1.2.0.5</font></span>"
      "<span id='panel'>A&nbsp;&amp;&nbsp;B</span>");
  EXPECT_EQ(document.AllItem("line")->InnerText(), "NotesVersion 1.2.0.5");
  EXPECT_EQ(document.AllItem("panel")->InnerText(),
            "A\xC2\xA0&\xC2\xA0"
            "B");
}

TEST_P(HtmlDocumentContract, InnerTextThatIsSetIsNoMarkup) {
  auto& document = Show("<font id='cell'>old <b>text</b></font>");
  const auto cell = document.AllItem("cell");
  cell->SetInnerText("<i>1</i> & 2");
  EXPECT_EQ(cell->InnerText(), "<i>1</i> & 2");
  EXPECT_EQ(cell->ChildCount(), 0);
  EXPECT_EQ(cell->ChildNodeCount(), 1);
}

TEST_P(HtmlDocumentContract, EmptyInnerTextLeavesNoNode) {
  auto& document = Show("<font id='cell'>old</font>");
  const auto cell = document.AllItem("cell");
  cell->SetInnerText("");
  EXPECT_EQ(cell->InnerHtml(), "");
  EXPECT_EQ(cell->ChildNodeCount(), 0);
}

TEST_P(HtmlDocumentContract, InnerHtmlOfAnEmptyElementIsEmpty) {
  EXPECT_EQ(Show("<div id='imgtab'></div>").AllItem("imgtab")->InnerHtml(), "");
}

TEST_P(HtmlDocumentContract, InnerHtmlReplacesWhatWasThere) {
  auto& document = Show("<div id='list'><b id='7'></b>text</div>");
  const auto list = document.AllItem("list");
  list->SetInnerHtml("<i>8</i>");
  EXPECT_EQ(base::ToLower(list->InnerHtml()), "<i>8</i>");
  EXPECT_FALSE(document.AllItem("7"));
}

TEST_P(HtmlDocumentContract, InnerHtmlClosesWhatIsLeftOpen) {
  auto& document = Show("<div id='list'></div>");
  const auto list = document.AllItem("list");
  list->SetInnerHtml("<font>Addons<hr style='height:1pt; '></font>");
  ASSERT_EQ(list->ChildCount(), 1);
  EXPECT_EQ(list->Child(0)->Child(0)->TagName(), "HR");
  list->SetInnerHtml("<b>open <i>both");
  EXPECT_EQ(base::ToLower(list->InnerHtml()), "<b>open <i>both</i></b>");
}

TEST_P(HtmlDocumentContract, TextOfAllScriptsGoesInAndComesBack) {
  auto& document = Show("<div id='list'>Größe</div>");
  const auto list = document.AllItem("list");
  EXPECT_EQ(list->InnerText(), "Größe");
  const std::string text = "Ωmega, Привет, 漢字, \xF0\x9F\x98\x80";
  list->SetInnerText(text);
  EXPECT_EQ(list->InnerText(), text);
  list->SetInnerHtml("<b id='ключ'>" + text + "</b>");
  ASSERT_TRUE(document.AllItem("ключ"));
  EXPECT_EQ(document.AllItem("ключ")->InnerText(), text);
  const auto input = document.CreateElement("<input type='button' value='" + text + "'>");
  EXPECT_EQ(input->Value(), text);
}

TEST_P(HtmlDocumentContract, ATextBetweenElementsHasNoMembersOfElements) {
  auto& document = Show("<div id='list'>text</div>");
  const auto text = document.AllItem("list")->ChildNode(0);
  ASSERT_TRUE(text);
  EXPECT_EQ(FailureNumber([&] { text->Id(); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->TagName(); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->Style("display"); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->SetStyle("display", "none"); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->ChildCount(); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->SetDisabled(true); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->InnerHtml(); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { text->InsertAdjacentHtml("beforeEnd", "x"); }), kNoSuchMember);
}

TEST_P(HtmlDocumentContract, AllChildElementsComeAtOnceHoweverManyThereAre) {
  std::string rows;
  for (int i = 0; i < 150; ++i) {
    rows += "<b id='" + std::to_string(i) + "'><i></i></b> text ";
  }
  auto& document = Show("<div id='list'>" + rows + "</div><div id='empty'>text</div>");
  const auto children = document.AllItem("list")->Children();
  ASSERT_EQ(children.size(), 150U);
  for (int i = 0; i < 150; ++i) {
    EXPECT_EQ(children[static_cast<std::size_t>(i)]->Id(), std::to_string(i));
  }
  EXPECT_TRUE(document.AllItem("empty")->Children().empty());
}

TEST_P(HtmlDocumentContract, ElementsOfATagAreFoundAtAnyDepthInTheirOrder) {
  auto& document = Show(
      "<div id='list'><input id='1'><p><b><input id='2'></b></p><input id='3'></div>"
      "<input id='4'>");
  const auto list = document.AllItem("list");
  std::string ids;
  for (const auto& input : list->ElementsByTag("input")) {
    ids += input->Id();
  }
  EXPECT_EQ(ids, "123");
  EXPECT_TRUE(list->ElementsByTag("img").empty());
}

TEST_P(HtmlDocumentContract, AnElementTakesOverTheAttributesOfAnotherButNotItsId) {
  auto& document = Show("<div id='7' title='old' style='padding-top:5pt;'></div>");
  const auto row = document.AllItem("7");
  row->MergeAttributes(
      document.CreateElement("<div id='8' title='new' role='treeitem' class='marked'>"));
  EXPECT_EQ(row->Id(), "7");
  EXPECT_EQ(row->Property("title"), "new");
  EXPECT_EQ(row->Property("role"), "treeitem");
  EXPECT_EQ(row->Property("className"), "marked");
  EXPECT_EQ(row->Style("paddingTop"), "5pt");
}

TEST_P(HtmlDocumentContract, PropertiesAreReadAndWrittenAsText) {
  auto& document = Show("<div id='row' class='list'></div>");
  const auto row = document.AllItem("row");
  EXPECT_EQ(row->Property("className"), "list");
  for (const char* name : {"className", "title", "role", "ariaExpanded"}) {
    row->SetProperty(name, "marked");
    EXPECT_EQ(row->Property(name), "marked") << name;
  }
  row->SetProperty("tabIndex", "0");
  EXPECT_EQ(row->Property("tabIndex"), "0");
  EXPECT_EQ(FailureNumber([&] { row->Property("noSuchThing"); }), kNoSuchMember);
}

TEST_P(HtmlDocumentContract, OnlyInputsHaveAValueAndOnlyImagesASource) {
  auto& document = Show("<div id='list'></div>");
  const auto list = document.AllItem("list");
  EXPECT_EQ(FailureNumber([&] { list->Value(); }), kNoSuchMember);
  EXPECT_EQ(FailureNumber([&] { list->Src(); }), kNoSuchMember);
}

}  // namespace kitbay::contract
