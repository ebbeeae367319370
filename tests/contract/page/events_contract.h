#pragma once

#include <functional>

#include "contract/page/html_document_host.h"
#include "contract/page/same_element.h"

namespace kitbay::contract {

/// A host whose page can be clicked.
class HtmlClickHost : public HtmlDocumentHost {
 public:
  /// Clicks an element as a user does, and returns when the page's events have been handled.
  virtual void Click(const platform::HtmlNodeRef& element) = 0;
};

struct HtmlClickHostFactory {
  const char* name;
  std::unique_ptr<HtmlClickHost> (*make)();
};

inline std::string NameOfClickHost(const ::testing::TestParamInfo<HtmlClickHostFactory>& info) {
  return info.param.name;
}

/// The suite for the events of the page. The file that includes it instantiates it like
/// `HtmlDocumentContract`.
class HtmlEventsContract : public ::testing::TestWithParam<HtmlClickHostFactory>,
                           protected platform::HtmlDocumentEvents {
 protected:
  platform::HtmlDocument& Show(const std::string& body) {
    document_ = host_->Load(
        "<html><head><title>Contract</title></head><body>" + body + "</body></html>", *this);
    return *document_;
  }

  void Click(const platform::HtmlNodeRef& element) { host_->Click(element); }
  int clicks() const { return clicks_; }

  /// Called at each click.
  std::function<void()> at_click_ = [] {};
  std::shared_ptr<platform::HtmlDocument> document_;

 private:
  void doc_onclick() override {
    ++clicks_;
    at_click_();
  }
  bool doc_ondragstart() override { return false; }

  int clicks_ = 0;
  std::unique_ptr<HtmlClickHost> host_ = GetParam().make();
};

TEST_P(HtmlEventsContract, AClickHasTheClickedElementAsItsSource) {
  auto& document = Show("<div id='list'><span id='7'><font>Notes</font></span></div>");
  const auto name = document.AllItem("7")->Child(0);
  platform::HtmlNodeRef source;
  at_click_ = [&] { source = document.EventSource(); };
  Click(name);
  ASSERT_EQ(clicks(), 1);
  ASSERT_TRUE(source);
  EXPECT_TRUE(AreSame(*source, *name));
  EXPECT_EQ(source->ParentElement()->ParentElement()->Id(), "list");
}

TEST_P(HtmlEventsContract, AfterTheClickThereIsNoSource) {
  auto& document = Show("<input type='button' id='update' value='Updates'>");
  Click(document.AllItem("update"));
  ASSERT_EQ(clicks(), 1);
  EXPECT_FALSE(document.EventSource());
}

TEST_P(HtmlEventsContract, EachClickHasItsOwnSource) {
  auto& document = Show("<img id='trans' alt='one'><img id='addons' alt='two'>");
  std::string sources;
  at_click_ = [&] { sources += document.EventSource()->Id() + " "; };
  Click(document.AllItem("addons"));
  Click(document.AllItem("trans"));
  EXPECT_EQ(sources, "addons trans ");
}

TEST_P(HtmlEventsContract, ADisabledButtonRaisesNoClick) {
  auto& document = Show(
      "<input type='button' id='a' value='Install' disabled>"
      "<input type='button' id='b' value='Install'>");
  Click(document.AllItem("a"));
  EXPECT_EQ(clicks(), 0);
  document.AllItem("b")->SetDisabled(true);
  Click(document.AllItem("b"));
  EXPECT_EQ(clicks(), 0);
  document.AllItem("b")->SetDisabled(false);
  Click(document.AllItem("b"));
  EXPECT_EQ(clicks(), 1);
}

TEST_P(HtmlEventsContract, AnElementThatWasInsertedCanBeClicked) {
  auto& document = Show("<div id='list'></div>");
  document.AllItem("list")->SetInnerHtml("<input type='button' id='btninstalled' value='Remove'>");
  std::string value;
  at_click_ = [&] { value = document.EventSource()->Value(); };
  Click(document.AllItem("btninstalled"));
  EXPECT_EQ(value, "Remove");
}

TEST_P(HtmlEventsContract, ThePageCanBeChangedWhileAClickIsHandled) {
  auto& document = Show("<div id='list'><div id='7'><b id='name'>Notes</b></div></div>");
  at_click_ = [&] {
    const auto row = document.EventSource()->ParentElement();
    row->RemoveNode(true);
    EXPECT_EQ(document.EventSource()->InnerText(), "Notes");
  };
  Click(document.AllItem("name"));
  EXPECT_EQ(clicks(), 1);
  EXPECT_EQ(document.AllItem("list")->ChildNodeCount(), 0);
}

TEST_P(HtmlEventsContract, ANewPageRaisesItsEventsOnce) {
  Show("<input type='button' id='a' value='x'>");
  auto& document = Show("<input type='button' id='a' value='x'>");
  Click(document.AllItem("a"));
  EXPECT_EQ(clicks(), 1);
}

}  // namespace kitbay::contract
