#pragma once

#include "base/error_log.h"
#include "platform/html_document.h"
#include "view/page_document.h"
#include "view/page_tabs.h"

namespace kitbay::view {

/// Decides what a click on the page does, by the clicked element and its ancestors.
class PageEvents : public platform::HtmlDocumentEvents {
 public:
  PageEvents(base::ErrorLog& log, const PageDocument& page, PageTabs& tabs)
      : log_(log), page_(page), tabs_(tabs) {}

  void doc_onclick() override;

  /// False: nothing of the page can be dragged.
  bool doc_ondragstart() override;

 private:
  void Dispatch(const platform::HtmlNodeRef& source);

  base::ErrorLog& log_;
  const PageDocument& page_;
  PageTabs& tabs_;
};

}  // namespace kitbay::view
