#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/html_document.h"

namespace kitbay::view {

/// The node behind a handle; fails with 91 when the handle is empty.
platform::HtmlNodeRef Needed(const platform::HtmlNodeRef& node);

/// The parent element of the node behind a handle; empty where either is missing.
platform::HtmlNodeRef ParentOf(const platform::HtmlNodeRef& node);

/// The page that is shown at the moment. Every access fails with 91 while there is none.
class PageDocument {
 public:
  void Connect(std::shared_ptr<platform::HtmlDocument> document) {
    document_ = std::move(document);
    ++number_;
  }
  void Drop() { document_.reset(); }
  bool IsConnected() const { return document_ != nullptr; }

  /// The how manieth page this is: nodes of an earlier one are of no use any more.
  int Number() const { return number_; }

  platform::HtmlDocument& document() const;

  /// The element of that id; fails with 91 when the page has none.
  platform::HtmlNodeRef Element(const std::string& id) const;

  /// Shows the element of that id, or hides it; fails with 91 when the page has none.
  void SetShown(const std::string& id, bool shown) const;

  /// Says `text` behind the lists, where it is seen while they are empty; a page may have no place
  /// for it.
  void SetNotice(const std::string& text) const;

 private:
  std::shared_ptr<platform::HtmlDocument> document_;
  int number_ = 0;
};

}  // namespace kitbay::view
