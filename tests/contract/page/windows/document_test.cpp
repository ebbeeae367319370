#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/page/html_document_contract.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

/// One window shows the pages of all tests: starting the control for each would take too long.
class ControlHost : public HtmlDocumentHost {
 public:
  std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                               platform::HtmlDocumentEvents& events) override {
    LoadedWindow& window = SharedWindow();
    if (!window.ShowMarkup(page_markup)) throw std::runtime_error("the page did not load");
    return window.window().ConnectDocument(events);
  }

  ~ControlHost() override { SharedWindow().window().DisconnectDocument(); }

 private:
  static LoadedWindow& SharedWindow() {
    return *static_cast<WindowOfSuite&>(*kWindowOfSuite).window;
  }

  class WindowOfSuite : public ::testing::Environment {
   public:
    void TearDown() override { window.reset(); }
    std::unique_ptr<LoadedWindow> window;
  };
  static ::testing::Environment* const kWindowOfSuite;
};

}  // namespace
}  // namespace kitbay::contract
