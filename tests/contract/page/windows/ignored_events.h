#pragma once

#include "platform/html_document.h"

namespace kitbay::contract {

/// A receiver that ignores the events of a page.
class IgnoredEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override {}
  bool doc_ondragstart() override { return false; }
};

}  // namespace kitbay::contract
