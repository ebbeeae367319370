#pragma once

#include "platform/html_document.h"

namespace kitbay::contract {

/// Events of a page that nobody follows.
class IgnoredEvents : public platform::HtmlDocumentEvents {
 public:
  void doc_onclick() override {}
  bool doc_ondragstart() override { return false; }
};

}  // namespace kitbay::contract
