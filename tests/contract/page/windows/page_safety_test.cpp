// Texts from outside become markup of the page: it may look odd, but nothing in it runs.

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "base/failure.h"
#include "contract/page/windows/ignored_events.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

using ::testing::ElementsAre;

class PageSafety : public ::testing::Test {
 protected:
  platform::HtmlDocument& Show(const std::string& body) {
    loaded_.told.clear();
    EXPECT_TRUE(loaded_.ShowMarkup("<html><body>" + body + "</body></html>"));
    document_ = loaded_.window().ConnectDocument(ignored_);
    return *document_;
  }
  void TearDown() override { loaded_.window().DisconnectDocument(); }

  LoadedWindow& loaded_ = SharedWindow();
  IgnoredEvents ignored_;
  std::shared_ptr<platform::HtmlDocument> document_;
};

constexpr const char* kRun = "document.getElementById(&quot;mark&quot;).innerText=&quot;ran&quot;";

TEST_F(PageSafety, ScriptsOfThePageDoNotRun) {
  auto& document = Show(
      "<b id='mark'>still</b>"
      "<script>document.getElementById('mark').innerText = 'ran'</script>");
  EXPECT_EQ(document.AllItem("mark")->InnerText(), "still");
}

TEST_F(PageSafety, HandlersInMarkupDoNotRun) {
  auto& document = Show(std::string("<b id='mark'>still</b><img src='none.gif' onerror=\"") + kRun +
                        "\"><svg onload=\"" + kRun + "\"></svg>");
  EXPECT_EQ(document.AllItem("mark")->InnerText(), "still");
}

TEST_F(PageSafety, MarkupThatIsPutInLaterDoesNotRunEither) {
  auto& document = Show("<b id='mark'>still</b><div id='list'></div>");
  document.AllItem("list")->SetInnerHtml(std::string("<img src='none.gif' onerror=\"") + kRun +
                                         "\"><script>" + kRun + "</script>");
  document.AllItem("list")->InsertAdjacentHtml(
      "beforeEnd", std::string("<input autofocus onfocus=\"") + kRun + "\">");
  EXPECT_EQ(document.AllItem("mark")->InnerText(), "still");
}

TEST_F(PageSafety, AFrameIsNoPageOfOurs) {
  loaded_.files().WriteAs("frame.html", "<html><body>framed</body></html>");
  Show("<iframe src='frame.html'></iframe>");
  EXPECT_THAT(loaded_.told, ElementsAre("WebBrowser1_DocumentComplete"));
}

TEST_F(PageSafety, AFrameThatIsPutInLaterIsNoPageOfOurs) {
  loaded_.files().WriteAs("frame.html", "<html><body>framed</body></html>");
  auto& document = Show("<div id='list'></div>");
  document.AllItem("list")->SetInnerHtml("<iframe src='frame.html'></iframe>");
  loaded_.told.clear();
  // The next page reported is the next one that the program loads.
  Show("<b id='next'></b>");
  EXPECT_THAT(loaded_.told, ElementsAre("WebBrowser1_DocumentComplete"));
}

TEST_F(PageSafety, NodesOfAnEarlierPageFail) {
  const auto mark = Show("<b id='mark'>still</b>").AllItem("mark");
  Show("<b id='mark'>next</b>");
  EXPECT_THROW(mark->InnerText(), base::Failure);
}

}  // namespace
}  // namespace kitbay::contract
