#include <memory>
#include <string>

#include "contract/page/events_contract.h"
#include "contract/page/html_document_contract.h"
#include "fakes/fake_html_document.h"

namespace kitbay::contract {
namespace {

class FakeDocumentHost : public HtmlClickHost {
 public:
  std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                               platform::HtmlDocumentEvents& events) override {
    if (shown_) {
      shown_->MakeStale();
    }
    shown_ = std::make_shared<fakes::FakeHtmlDocument>(page_markup);
    shown_->SetEvents(&events);
    return shown_;
  }

  void Click(const platform::HtmlNodeRef& element) override { shown_->Click(element); }

 private:
  std::shared_ptr<fakes::FakeHtmlDocument> shown_;
};

std::unique_ptr<HtmlDocumentHost> MakeHost() { return std::make_unique<FakeDocumentHost>(); }
std::unique_ptr<HtmlClickHost> MakeClickHost() { return std::make_unique<FakeDocumentHost>(); }

constexpr auto kInvalidArgument = static_cast<std::int32_t>(0x80070057U);

INSTANTIATE_TEST_SUITE_P(Native, HtmlDocumentContract,
                         ::testing::Values(HtmlDocumentHostFactory{"Fake", &MakeHost,
                                                                   kInvalidArgument}),
                         NameOfHost);
INSTANTIATE_TEST_SUITE_P(Native, HtmlEventsContract,
                         ::testing::Values(HtmlClickHostFactory{"Fake", &MakeClickHost}),
                         NameOfClickHost);

}  // namespace
}  // namespace kitbay::contract
