#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "contract/page/html_document_contract.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

class ControlHost : public HtmlDocumentHost {
 public:
  ~ControlHost() override { SharedWindow().window().DisconnectDocument(); }

  std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                               platform::HtmlDocumentEvents& events) override {
    if (!SharedWindow().ShowMarkup(page_markup)) throw std::runtime_error("no page");
    return SharedWindow().window().ConnectDocument(events);
  }
};

std::unique_ptr<HtmlDocumentHost> MakeHost() { return std::make_unique<ControlHost>(); }

INSTANTIATE_TEST_SUITE_P(Windows, HtmlDocumentContract,
                         ::testing::Values(HtmlDocumentHostFactory{"Control", &MakeHost}),
                         NameOfHost);

}  // namespace
}  // namespace kitbay::contract
