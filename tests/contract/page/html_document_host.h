#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "base/failure.h"
#include "contract/failure_number.h"
#include "platform/html_document.h"

namespace kitbay::contract {

/// Shows pages to the contract's tests.
class HtmlDocumentHost {
 public:
  virtual ~HtmlDocumentHost() = default;

  /// Shows a page with that markup and waits until it is complete; the previous page is left.
  /// Events of the page go to `events`.
  virtual std::shared_ptr<platform::HtmlDocument> Load(const std::string& page_markup,
                                                       platform::HtmlDocumentEvents& events) = 0;
};

/// How the suite gets its host, with a name for the list of tests.
struct HtmlDocumentHostFactory {
  const char* name;
  std::unique_ptr<HtmlDocumentHost> (*make)();

  /// The failure with which the page refuses a node where none may be. Engines differ in it.
  std::int32_t refusal;
};

inline std::string NameOfHost(const ::testing::TestParamInfo<HtmlDocumentHostFactory>& info) {
  return info.param.name;
}

/// A receiver for tests that raise no events.
class NoEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override { ADD_FAILURE() << "nobody clicked"; }
  bool doc_ondragstart() override {
    ADD_FAILURE() << "nobody dragged";
    return false;
  }
};

/// The suite for what a document and its nodes do. The file that includes the tests instantiates
/// it:
///   INSTANTIATE_TEST_SUITE_P(Fake, HtmlDocumentContract,
///       ::testing::Values(HtmlDocumentHostFactory{"Page", &MakeHost, kFails}), NameOfHost);
class HtmlDocumentContract : public ::testing::TestWithParam<HtmlDocumentHostFactory> {
 protected:
  /// Shows a quirks-mode page with that body content.
  platform::HtmlDocument& Show(const std::string& body) {
    document_ = host_->Load(
        "<html><head><meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">"
        "<title>Contract</title></head><body>" +
            body + "</body></html>",
        events_);
    return *document_;
  }

  /// Demands that `call` fails with the page's refusal.
  template <typename Call>
  void ExpectRefusal(Call call) {
    EXPECT_EQ(FailureNumber(call), GetParam().refusal);
  }

  std::shared_ptr<platform::HtmlDocument> document_;

 private:
  NoEvents events_;
  std::unique_ptr<HtmlDocumentHost> host_ = GetParam().make();
};

inline constexpr std::int32_t kNoSuchMember =
    static_cast<std::int32_t>(base::RuntimeError::kMemberNotFound);

/// The failure of handles of a page that is no longer shown.
inline constexpr std::int32_t kPageIsLeft = static_cast<std::int32_t>(0x80010108U);

}  // namespace kitbay::contract
