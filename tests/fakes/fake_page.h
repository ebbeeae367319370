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
    std::string member;  ///< Empty for any.
    int calls_left = 0;  ///< Until the failing call; 0 fails each call.
    base::Failure failure;
  };

  /// Every member's first step: counts what it costs in late-bound calls of the real document
  /// (`Child` is `children`, then `item`), and throws when the page is stale or a test has ordered
  /// this call to fail.
  void Enter(const char* member, int cost = 1);

  /// The element that has the focus; null when it has gone, or was switched off, or there is none.
  DomNode* Active() const;

  /// Raises the event of a click on an element; whether there was one.
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

  /// How far elements are scrolled, in pixels; what is filled again begins at its top.
  std::map<const DomNode*, int> scrolled;

  /// The element that was given the focus last; null for none.
  DomNode* focused = nullptr;
  platform::HtmlDocumentEvents* events = nullptr;
};

/// A handle to `node`; empty for null.
platform::HtmlNodeRef MakeHandle(const std::shared_ptr<FakePage>& page, DomNode* node);

/// The node of a handle that `MakeHandle` made; null for an empty handle. Throws
/// `std::invalid_argument` for any other handle.
DomNode* NodeOf(const platform::HtmlNode* handle);

}  // namespace kitbay::fakes
