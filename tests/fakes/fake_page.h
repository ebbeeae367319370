#pragma once

#include <map>
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
    std::string member;  ///< empty for any
    int calls_left = 0;  ///< until the failing call; with 0 each call fails
    base::Failure failure;
  };

  /// Every member's first step: counts the late-bound calls that it would cost in a real document
  /// (`Child` is `children`, then `item`), and throws if the page is stale or a test has arranged
  /// that this call fails.
  void Enter(const char* member, int cost = 1);

  /// The focused element; null if it has been removed or disabled, or there is none.
  DomNode* Active() const;

  /// Raises the event of a click on an element. Returns whether there was one.
  bool RaiseClick(DomNode& source);

  DomTree tree;
  std::string base_url;
  int document_mode = 5;
  int body_client_height = 400;
  bool stale = false;
  int calls = 0;
  std::vector<OrderedFailure> failures;
  DomNode* event_source = nullptr;
  platform::KeyPress event_key;

  /// How far elements are scrolled, in pixels; an element that is filled again starts at its top.
  std::map<const DomNode*, int> scrolled;

  /// The element that last got the focus; null for none.
  DomNode* focused = nullptr;
  platform::HtmlDocumentEvents* events = nullptr;
};

/// A handle to `node`; empty for null.
platform::HtmlNodeRef MakeHandle(const std::shared_ptr<FakePage>& page, DomNode* node);

/// The node of a handle from `MakeHandle`; null for an empty handle. Throws `std::invalid_argument`
/// for any other handle.
DomNode* NodeOf(const platform::HtmlNode* handle);

}  // namespace kitbay::fakes
