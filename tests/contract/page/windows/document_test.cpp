#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "contract/page/events_contract.h"
#include "contract/page/html_document_contract.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

std::shared_ptr<platform::HtmlDocument> Shown(const std::string& page_markup,
                                              platform::HtmlDocumentEvents& events) {
  if (!SharedWindow().ShowMarkup(page_markup)) {
    throw std::runtime_error("no page");
  }
  return SharedWindow().window().ConnectDocument(events);
}

class ControlHost : public HtmlDocumentHost {
 public:
  ~ControlHost() override { SharedWindow().window().DisconnectDocument(); }

  std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                               platform::HtmlDocumentEvents& events) override {
    return Shown(page_markup, events);
  }
};

/// Clicks with the mouse, so the element must be in the corner of the page. Events arrive in the
/// order in which they were raised: each click is followed by a click on a marker of the host.
class ControlClickHost : public HtmlClickHost, private platform::HtmlDocumentEvents {
 public:
  ~ControlClickHost() override { SharedWindow().window().DisconnectDocument(); }

  std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                               platform::HtmlDocumentEvents& events) override {
    std::string page = page_markup;
    page.insert(page.rfind("</body>"),
                "<b id='mark' style='position:absolute; left:0; top:200px'>mark</b>");
    events_ = &events;
    document_ = Shown(page, *this);
    return document_;
  }

  void Click(const platform::HtmlNodeRef& element) override {
    for (const char* edge : {"left", "top"}) {
      element->SetStyle(edge, "0px");
    }
    element->SetStyle("position", "absolute");
    marks_ = 0;
    ClickAt(6);
    ClickAt(206);
    SharedWindow().RunUntil([&] { return marks_ > 0; });
    element->SetStyle("position", "static");
  }

 private:
  void doc_onclick() override {
    const platform::HtmlNodeRef source = document_->EventSource();
    if (source != nullptr && source->Id() == "mark") {
      ++marks_;
    } else {
      events_->doc_onclick();
    }
  }
  bool doc_ondragstart() override { return events_->doc_ondragstart(); }

  static void ClickAt(int y) {
    PostMessageW(SharedWindow().Browser(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(6, y));
    PostMessageW(SharedWindow().Browser(), WM_LBUTTONUP, 0, MAKELPARAM(6, y));
  }

  platform::HtmlDocumentEvents* events_ = nullptr;
  std::shared_ptr<platform::HtmlDocument> document_;
  int marks_ = 0;
};

std::unique_ptr<HtmlDocumentHost> MakeHost() { return std::make_unique<ControlHost>(); }
std::unique_ptr<HtmlClickHost> MakeClickHost() { return std::make_unique<ControlClickHost>(); }

INSTANTIATE_TEST_SUITE_P(Windows, HtmlDocumentContract,
                         ::testing::Values(HtmlDocumentHostFactory{"Control", &MakeHost, E_FAIL}),
                         NameOfHost);
INSTANTIATE_TEST_SUITE_P(Windows, HtmlEventsContract,
                         ::testing::Values(HtmlClickHostFactory{"Control", &MakeClickHost}),
                         NameOfClickHost);

}  // namespace
}  // namespace kitbay::contract
