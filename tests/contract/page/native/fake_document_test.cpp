// What the page in memory offers to tests beyond the contract.

#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "contract/failure_number.h"
#include "fakes/fake_html_document.h"

namespace kitbay::fakes {
namespace {

using base::Failure;
using base::RuntimeError;
using contract::FailureNumber;

class RecordingEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override { on_click(); }
  bool doc_ondragstart() override { return drag_goes_on; }

  std::function<void()> on_click = [] {};
  bool drag_goes_on = true;
};

TEST(FakeHtmlDocument, SourcesAreReadAgainstTheBase) {
  FakeHtmlDocument document("<img id='a' src='iaddons.gif'>");
  EXPECT_EQ(document.AllItem("a")->Src(), "file:///C:/Program Files/Kitbay/iaddons.gif");
}

TEST(FakeHtmlDocument, TheBodyHeightIsSet) {
  FakeHtmlDocument document("");
  document.set_body_client_height(512);
  EXPECT_EQ(document.BodyClientHeight(), 512);
}

TEST(FakeHtmlDocument, AClickHasItsSourceWhileItIsHandled) {
  FakeHtmlDocument document("<div id='list'><b id='7'>text</b></div>");
  RecordingEvents events;
  std::string source;
  events.on_click = [&] { source = document.EventSource()->Id(); };
  document.SetEvents(&events);
  EXPECT_TRUE(document.Click(document.ById("7")));
  EXPECT_EQ(source, "7");
  EXPECT_FALSE(document.EventSource());
  EXPECT_TRUE(document.Click(document.ById("7")->ChildNode(0)));
  EXPECT_EQ(source, "7");
}

TEST(FakeHtmlDocument, AClickWithinAClickGivesTheOuterSourceBack) {
  FakeHtmlDocument document("<b id='outer'></b><b id='inner'></b>");
  RecordingEvents events;
  std::vector<std::string> sources;
  events.on_click = [&] {
    sources.push_back(document.EventSource()->Id());
    if (sources.size() == 1) {
      document.Click(document.ById("inner"));
      sources.push_back(document.EventSource()->Id());
    }
  };
  document.SetEvents(&events);
  document.Click(document.ById("outer"));
  EXPECT_THAT(sources, testing::ElementsAre("outer", "inner", "outer"));
}

TEST(FakeHtmlDocument, ADisabledButtonRaisesNoClick) {
  FakeHtmlDocument document("<input id='update' type='button' disabled>");
  RecordingEvents events;
  int clicks = 0;
  events.on_click = [&] { ++clicks; };
  document.SetEvents(&events);
  EXPECT_FALSE(document.Click(document.ById("update")));
  document.ById("update")->SetDisabled(false);
  EXPECT_TRUE(document.Click(document.ById("update")));
  EXPECT_EQ(clicks, 1);
}

TEST(FakeHtmlDocument, AClickOffThePageIsAMistakeOfTheTest) {
  FakeHtmlDocument document("");
  EXPECT_THROW(document.Click(document.CreateElement("<b>")), std::invalid_argument);
  EXPECT_THROW(document.Click(nullptr), std::invalid_argument);
}

TEST(FakeHtmlDocument, ADragGoesOnAsTheReceiverSays) {
  FakeHtmlDocument document("<img id='a'>");
  RecordingEvents events;
  document.SetEvents(&events);
  EXPECT_TRUE(document.StartDrag(document.ById("a")));
  events.drag_goes_on = false;
  EXPECT_FALSE(document.StartDrag(document.ById("a")));
}

TEST(FakeHtmlDocument, AStalePageFailsAsADisconnectedObject) {
  FakeHtmlDocument document("<b id='7'></b>");
  const auto node = document.AllItem("7");
  const auto list = document.GetElementsByName("7");
  document.MakeStale();
  const auto disconnected = static_cast<std::int32_t>(0x80010108);
  EXPECT_EQ(FailureNumber([&] { document.AllItem("7"); }), disconnected);
  EXPECT_EQ(FailureNumber([&] { node->Id(); }), disconnected);
  EXPECT_EQ(FailureNumber([&] { list->Length(); }), disconnected);
  EXPECT_EQ(FailureNumber([&] { list->Item(0); }), disconnected);
}

TEST(FakeHtmlDocument, HandlesOutliveTheDocument) {
  platform::HtmlNodeRef node;
  {
    FakeHtmlDocument document("<div id='list'><b id='7'>text</b></div>");
    node = document.AllItem("7");
  }
  EXPECT_EQ(node->InnerText(), "text");
  EXPECT_EQ(node->ParentElement()->Id(), "list");
}

TEST(FakeHtmlDocument, TheNthCallFailsOnce) {
  FakeHtmlDocument document("<b id='7'></b>");
  document.FailCall(2, Failure(RuntimeError::kOutOfMemory));
  const auto node = document.AllItem("7");
  EXPECT_EQ(FailureNumber([&] { node->Id(); }), 7);
  EXPECT_EQ(node->Id(), "7");
}

TEST(FakeHtmlDocument, CountsTheLateBoundCallsThatTheRealDocumentWouldTake) {
  FakeHtmlDocument document("<div id='list'><b></b><b></b></div>");
  const auto list = document.AllItem("list");
  EXPECT_EQ(document.calls(), 2);  // all, item
  list->Id();
  EXPECT_EQ(document.calls(), 3);
  list->SetStyle("color", "navy");
  EXPECT_EQ(document.calls(), 5);  // style, color
  list->Children();
  EXPECT_EQ(document.calls(), 8);  // children, its enumerator, a batch
}

TEST(FakeHtmlDocument, AMemberFailsAlwaysOrAtItsNthCall) {
  FakeHtmlDocument document("<b id='7'></b>");
  const auto node = document.AllItem("7");
  document.FailMember("SetStyle", Failure(70, "Permission denied"), 2);
  node->SetStyle("color", "navy");
  EXPECT_EQ(FailureNumber([&] { node->SetStyle("color", "red"); }), 70);
  EXPECT_EQ(node->Style("color"), "navy");
  document.FailMember("Id", Failure(70, "Permission denied"));
  EXPECT_EQ(FailureNumber([&] { node->Id(); }), 70);
  EXPECT_EQ(FailureNumber([&] { node->Id(); }), 70);
  document.FailNothing();
  EXPECT_EQ(node->Id(), "7");
}

TEST(FakeHtmlDocument, LookingAtThePageCountsAsNoCall) {
  FakeHtmlDocument document("<b id='7'>x</b>");
  document.FailMember("AllItem", Failure(70, "Permission denied"));
  EXPECT_EQ(FakeHtmlDocument::Outer(document.ById("7")), "<b id=\"7\">x</b>");
  EXPECT_EQ(document.TreeText(), "body\n  b id=\"7\"\n    \"x\"\n");
  EXPECT_EQ(document.calls(), 0);
}

TEST(FakeHtmlDocument, MarkupIsWrittenWithItsSpecialCharacters) {
  FakeHtmlDocument document(
      "<b id='7' title='\"&quot;&amp;'>1 &lt; 2&nbsp;&amp; 3<br><!--c--></b>");
  EXPECT_EQ(FakeHtmlDocument::Outer(document.ById("7")),
            "<b id=\"7\" title=\"&quot;&quot;&amp;\">1 &lt; 2&nbsp;&amp; 3<br><!--c--></b>");
}

TEST(FakeHtmlDocument, ATableMayStandInAParagraphOfAQuirksModePage) {
  FakeHtmlDocument document("<div id='list'></div>");
  document.AllItem("list")->SetInnerHtml("<p><table id='t'><tr><td>x</table>");
  EXPECT_EQ(document.AllItem("t")->ParentElement()->TagName(), "P");
}

TEST(FakeHtmlDocument, CellsNeedARowToStandIn) {
  FakeHtmlDocument document("<table><tr id='row'></tr></table><div id='list'></div>");
  document.AllItem("row")->SetInnerHtml("<td id='a'>x</td>");
  document.AllItem("list")->SetInnerHtml("<td id='b'>x</td>");
  EXPECT_TRUE(document.AllItem("a"));
  EXPECT_FALSE(document.AllItem("b"));
}

TEST(FakeHtmlDocument, InnerTextIsWhatAReaderSees) {
  FakeHtmlDocument document(
      "<div id='a'>one\n   <b>two </b> three<br>four<div>five</div><i style='display:none'>no</i>"
      "<script>no</script></div><div style='display:none'><b id='b'>a  b</b></div>");
  EXPECT_EQ(document.AllItem("a")->InnerText(), "one two three\nfour\nfive");
  EXPECT_EQ(document.AllItem("b")->InnerText(), "a  b");
}

}  // namespace
}  // namespace kitbay::fakes
