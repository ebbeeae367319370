#include "view/page_document.h"

#include "base/failure.h"
#include "view/page_ids.h"

namespace kitbay::view {

using base::Failure;
using base::RuntimeError;

platform::HtmlNodeRef Needed(const platform::HtmlNodeRef& node) {
  if (!node) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return node;
}

platform::HtmlNodeRef ParentOf(const platform::HtmlNodeRef& node) {
  return node ? node->ParentElement() : nullptr;
}

platform::HtmlDocument& PageDocument::document() const {
  if (!document_) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return *document_;
}

platform::HtmlNodeRef PageDocument::Element(const std::string& id) const {
  return Needed(document().AllItem(id));
}

platform::HtmlNodeRef PageDocument::UpdatesControl() const {
  return Needed(Element(kCategory)->ChildNode(kUpdatesControl));
}

void PageDocument::SetShown(const std::string& id, bool shown) const {
  Element(id)->SetStyle("display", shown ? "" : "none");
}

void PageDocument::SetNotice(const std::string& text) const {
  if (const platform::HtmlNodeRef notice = document().AllItem(kNotice)) {
    notice->SetInnerText(text);
  }
}

}  // namespace kitbay::view
