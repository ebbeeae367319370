#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "fakes/fake_dom.h"
#include "platform/html_document.h"

namespace kitbay::fakes {

/// What a `FakeHtmlDocument` and the handles to its nodes share.
struct FakePage {
  struct OrderedFailure {
    std::string member;  ///< Empty for any.
    int calls_left = 0;  ///< Until the failing call; 0 fails each call.
    base::Failure failure;
  };

  /// Every member's first step: counts what it costs in late-bound calls of the real document
  /// (`Child` is `children`, then `item`), and throws when the page is stale or a test has ordered
  /// this call to fail.
  void Enter(const char* member, int cost = 1);

  DomTree tree;
  std::string base_url;
  int body_client_height = 400;
  bool stale = false;
  int calls = 0;
  std::vector<OrderedFailure> failures;
  DomNode* event_source = nullptr;
  platform::HtmlDocumentEvents* events = nullptr;
};

/// A handle to `node`; empty for null.
platform::HtmlNodeRef MakeHandle(const std::shared_ptr<FakePage>& page, DomNode* node);

/// The node of a handle that `MakeHandle` made; null for an empty handle. Throws
/// `std::invalid_argument` for any other handle.
DomNode* NodeOf(const platform::HtmlNode* handle);

}  // namespace kitbay::fakes
