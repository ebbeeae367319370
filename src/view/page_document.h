#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/html_document.h"

namespace kitbay::view {

/// The node behind a handle; fails with 91 if the handle is empty.
platform::HtmlNodeRef Needed(const platform::HtmlNodeRef& node);

/// The parent element of the node behind a handle; empty if either is missing.
platform::HtmlNodeRef ParentOf(const platform::HtmlNodeRef& node);

/// The page that is currently shown. Every access fails with 91 while there is none.
class PageDocument {
 public:
  void Connect(std::shared_ptr<platform::HtmlDocument> document) {
    document_ = std::move(document);
    ++number_;
  }
  void Drop() { document_.reset(); }
  bool IsConnected() const { return document_ != nullptr; }

  /// A number that changes with every page; nodes of an earlier page can no longer be used.
  int Number() const { return number_; }

  platform::HtmlDocument& document() const;

  /// The element with that id; fails with 91 if the page has none.
  platform::HtmlNodeRef Element(const std::string& id) const;

  /// The control of the category switch that shows the updates; fails with 91 if there is none.
  platform::HtmlNodeRef UpdatesControl() const;

  /// Shows or hides the element with that id; fails with 91 if the page has none.
  void SetShown(const std::string& id, bool shown) const;

  /// Shows `text` behind the lists, where it is visible while they are empty. A page may have no
  /// place for it.
  void SetNotice(const std::string& text) const;

 private:
  std::shared_ptr<platform::HtmlDocument> document_;
  int number_ = 0;
};

}  // namespace kitbay::view
